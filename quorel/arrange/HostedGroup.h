// A group of one of the kinds whose answers come from a host object.
#ifndef QUOREL_ARRANGE_HOSTEDGROUP_H
#define QUOREL_ARRANGE_HOSTEDGROUP_H

#include <quorel/arrange/Alignment.h>
#include <quorel/arrange/IArrangeable.h>
#include <quorel/arrange/Separator.h>
#include <quorel/geom/Point.h>
#include <quorel/utility/Export.h>

namespace quorel {
namespace arrange {

/// A group of kind G (Row, Column, Flipping, HorizontalWrapping,
/// VerticalWrapping, AutoLayout) that asks the host object of class H for
/// everything the group kind leaves to a host: the children, spacing,
/// alignment, margins and separators, and tells it Position and SetDimensions.
///
/// H needs member functions of the same names and signatures.  The host must
/// outlive the group.  The parent argument does not reach the virtual base
/// IArrangeable: the parent pointer comes from the parent group's rebuild.
template <class G, class H>
class QRL_EXPORT HostedGroup : public G {
public:
    HostedGroup(H& inHost, IArrangeable* inParent) : G(inParent), mHost(inHost) {}

    bool VisitChildren(IArrangeable::ConstVisitor inFunction) const override {
        H const& host = mHost;
        return host.VisitChildren(inFunction);
    }
    bool VisitChildren(IArrangeable::Visitor inFunction) override { return mHost.VisitChildren(inFunction); }
    float HorizontalSpacing() const override { return mHost.HorizontalSpacing(); }
    float VerticalSpacing() const override { return mHost.VerticalSpacing(); }
    AlignmentHorizontal HorizontalAlignment() const override { return mHost.HorizontalAlignment(); }
    AlignmentVertical VerticalAlignment() const override { return mHost.VerticalAlignment(); }
    float LeftMargin() const override { return mHost.LeftMargin(); }
    float RightMargin() const override { return mHost.RightMargin(); }
    float TopMargin() const override { return mHost.TopMargin(); }
    float BottomMargin() const override { return mHost.BottomMargin(); }
    ISeparator* BuildSeparator() override { return mHost.BuildSeparator(); }
    void ClearSeparators() override { mHost.ClearSeparators(); }
    void Position(geom::PointT<float> const& inTopLeft) override { mHost.Position(inTopLeft); }
    void SetDimensions(geom::PointT<float> const& inSize) override { mHost.SetDimensions(inSize); }

    /// The host object.
    H& Host() const { return mHost; }

private:
    H& mHost;
};

}  // namespace arrange
}  // namespace quorel

#endif
