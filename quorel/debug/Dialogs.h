// The developer dialogs and the presenter that puts them on screen.
//
// The library describes each dialog completely (title, items, positions in
// dialog units, texts already localised) and hands the description, on a
// thread made for the purpose, to the installed DialogPresenter.  A GUI host
// installs a presenter that shows a real window; the default one writes a
// one-button dialog's texts to standard error and presses its button at once.
#ifndef QUOREL_DEBUG_DIALOGS_H
#define QUOREL_DEBUG_DIALOGS_H

#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

#include <cstdint>
#include <vector>

namespace quorel {
namespace debug {

/// The class of a dialog item.
enum DialogItemClass : std::uint16_t {
    kDialogItemClass_Button = 0x0080,
    kDialogItemClass_Static = 0x0082
};

/// Window styles of the items and of the dialog itself.
constexpr std::uint32_t kDialogStyle_Dialog = 0x80C008CC;  ///< centred modal pop-up with a caption
constexpr std::uint32_t kDialogStyle_Button = 0x50030000;
constexpr std::uint32_t kDialogStyle_DefaultButton = 0x50030001;
constexpr std::uint32_t kDialogStyle_Static = 0x50000000;

/// One control of a dialog.  Coordinates are dialog units.
struct DialogItem {
    std::int32_t mID;
    DialogItemClass mClass;
    std::uint32_t mStyle;
    std::int16_t mX, mY, mWidth, mHeight;
    UTF16String mText;

    bool IsButton() const noexcept { return mClass == kDialogItemClass_Button; }
    bool IsDefaultButton() const noexcept { return IsButton() && (mStyle & 1u) != 0; }
};

/// A whole dialog: title, placement, size and items in creation order.
struct DialogDescription {
    UTF16String mTitle;
    std::uint32_t mStyle = kDialogStyle_Dialog;
    std::int16_t mX = 32, mY = 32, mWidth = 0, mHeight = 0;
    std::vector<DialogItem> mItems;

    /// The number of button items.
    std::size_t ButtonCount() const noexcept;
};

/// The dialog's reaction to its buttons, supplied by the library.
class QRL_EXPORT DialogProcedure {
public:
    virtual ~DialogProcedure();
    /// The button inItemID was clicked (with the Control key down or not).
    /// Returns true and sets outResult when that ends the dialog; false when the
    /// dialog stays up (the presenter then waits for the next click).
    virtual bool Command(std::int32_t inItemID, bool inControlKeyDown, std::int32_t& outResult) = 0;
};

/// Shows dialogs.  Called on a thread of its own for each dialog, possibly on
/// several threads at once, so an implementation must be free-threaded.
class QRL_EXPORT DialogPresenter {
public:
    virtual ~DialogPresenter();
    /// Shows inDialog modally and returns the result its procedure ended it
    /// with, or -1 when no dialog could be made.
    virtual std::int32_t Present(DialogDescription const& inDialog, DialogProcedure& inProcedure) = 0;
};

/// Installs the presenter of all developer dialogs (no ownership taken); null
/// goes back to the default presenter.
QRL_EXPORT void SetDialogPresenter(DialogPresenter* inPresenter);

/// The presenter in use: the installed one or the default.
QRL_EXPORT DialogPresenter& GetDialogPresenter();

/// The default presenter: a dialog with one button has its title and texts
/// written to standard error and its button pressed at once, without waiting;
/// a dialog with more buttons cannot be made here (-1).
QRL_EXPORT DialogPresenter& GetDefaultDialogPresenter();

}  // namespace debug

namespace utility {

/// Shows the message dialog with inText, on a thread of its own while the
/// caller waits, and then requests a debugger break.  Nothing is thrown to the
/// caller: every failure of the dialog machinery ends in a debugger break.
QRL_EXPORT void ThreadSafeMessageDialog(char const* inText);

}  // namespace utility
}  // namespace quorel

#endif
