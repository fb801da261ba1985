// A dialog as a host builds it: its controls derive from Single, its
// containers from the group kinds, and the engine tells each control its
// rectangle.  Here a control just remembers its rectangle and prints it.
#include "Layout.h"

#include <quorel/arrange/AutoLayout.h>
#include <quorel/arrange/Column.h>
#include <quorel/arrange/Row.h>
#include <quorel/arrange/Separator.h>
#include <quorel/arrange/Single.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace {

using quorel::arrange::IArrangeable;
using quorel::geom::PointT;
using quorel::geom::RectT;

void PrintRect(std::string const& inName, RectT<float> const& inRect) {
    std::printf("    %-18s x %6.1f  y %6.1f  w %6.1f  h %6.1f\n", inName.c_str(), inRect.x, inRect.y, inRect.width,
                inRect.height);
}

// A control with a fixed best size; an edit field grows in width.
class Control : public quorel::arrange::Single {
public:
    Control(std::string inName, float inWidth, float inHeight, bool inGrows = false)
        : mName(std::move(inName)), mWidth(inWidth), mHeight(inHeight), mGrows(inGrows) {}

    float BestWidth() const override { return mWidth; }
    float BestHeight() const override { return mHeight; }
    bool HorizontallyExpandable() const override { return mGrows; }
    PointT<float> Place(RectT<float> const& inRect) override {
        mPlaced = inRect;
        return PointT<float>(inRect.width, inRect.height);
    }
    void Print() const { PrintRect(mName, mPlaced); }

private:
    std::string mName;
    float mWidth;
    float mHeight;
    bool mGrows;
    RectT<float> mPlaced;
};

// A thin line between two neighbours.
class Divider : public quorel::arrange::ISeparator {
public:
    explicit Divider(std::string inName) : mName(std::move(inName)) {}
    void Place(int, RectT<float> const& inRect) override { mPlaced = inRect; }
    void Print() const { PrintRect(mName, mPlaced); }

private:
    std::string mName;
    RectT<float> mPlaced;
};

// A container of kind G with its spacing, margins and alignment; it may draw
// dividers between its children.
template <class G>
class Box : public G {
public:
    Box(std::string inName, std::vector<IArrangeable*> inChildren, float inSpacing, float inMargin = 0,
        bool inDividers = false)
        : mName(std::move(inName)),
          mChildren(std::move(inChildren)),
          mSpacing(inSpacing),
          mMargin(inMargin),
          mDividers(inDividers) {}

    bool VisitChildren(IArrangeable::ConstVisitor inFunction) const override {
        for (IArrangeable const* child : mChildren) {
            inFunction(*child);
        }
        return true;
    }
    bool VisitChildren(IArrangeable::Visitor inFunction) override {
        for (IArrangeable* child : mChildren) {
            inFunction(*child);
        }
        return true;
    }
    float HorizontalSpacing() const override { return mSpacing; }
    float VerticalSpacing() const override { return mSpacing; }
    quorel::arrange::AlignmentHorizontal HorizontalAlignment() const override { return mAlignment; }
    float LeftMargin() const override { return mMargin; }
    float RightMargin() const override { return mMargin; }
    float TopMargin() const override { return mMargin; }
    float BottomMargin() const override { return mMargin; }
    quorel::arrange::ISeparator* BuildSeparator() override {
        if (!mDividers) {
            return nullptr;
        }
        mDividerList.emplace_back(new Divider(mName + " divider " + std::to_string(mDividerList.size() + 1)));
        return mDividerList.back().get();
    }
    void ClearSeparators() override { mDividerList.clear(); }
    void SetDimensions(PointT<float> const& inSize) override { mContentSize = inSize; }

    void Print() const {
        std::printf("    %-18s content %6.1f x %6.1f\n", mName.c_str(), mContentSize.x, mContentSize.y);
        for (auto const& divider : mDividerList) {
            divider->Print();
        }
    }

    quorel::arrange::AlignmentHorizontal mAlignment = quorel::arrange::kAlignmentHorizontal_Left;

private:
    std::string mName;
    std::vector<IArrangeable*> mChildren;
    float mSpacing;
    float mMargin;
    bool mDividers;
    std::vector<std::unique_ptr<Divider>> mDividerList;
    PointT<float> mContentSize;
};

}  // namespace

void ShowLayout() {
    std::printf("Layout: a dialog arranged at three window sizes\n");
    Control nameLabel("Name:", 40, 12);
    Control nameField("name field", 100, 20, true);
    Control draft("[ ] Draft", 60, 12);
    Control shared("[ ] Shared", 60, 12);
    Control archived("[ ] Archived", 60, 12);
    Control ok("OK", 50, 18);
    Control cancel("Cancel", 50, 18);

    Box<quorel::arrange::Row> nameRow("name row", {&nameLabel, &nameField}, 6);
    Box<quorel::arrange::AutoLayout> options("options", {&draft, &shared, &archived}, 4, 0, true);
    Box<quorel::arrange::Row> buttons("buttons", {&ok, &cancel}, 8);
    Box<quorel::arrange::Column> dialog("dialog", {&nameRow, &options, &buttons}, 10, 12, true);
    dialog.mAlignment = quorel::arrange::kAlignmentHorizontal_Center;

    PointT<float> const best = dialog.BestSize();
    std::printf("  best size %.1f x %.1f, %zu layouts to choose from\n", best.x, best.y,
                dialog.Arrangements().Size());

    RectT<float> const windows[] = {RectT<float>(0, 0, 320, 100), RectT<float>(0, 0, 180, 200),
                                    RectT<float>(0, 0, 150, 120)};
    for (RectT<float> const& window : windows) {
        dialog.Arrange(window);
        std::printf("  window %.0f x %.0f:\n", window.width, window.height);
        for (Control const* control : {&nameLabel, &nameField, &draft, &shared, &archived, &ok, &cancel}) {
            control->Print();
        }
        options.Print();
        dialog.Print();
    }
}
