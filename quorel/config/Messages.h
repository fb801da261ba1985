// Message constants of the developer dialogs and the file layer.
//
// Each constant is "$$$/" key "=" English default text.  A Localizer receives
// the whole constant; without one, the text behind the first "=" is used.
// "@0" and "@1" are filled in with ReplaceInString by the code that shows them.
#ifndef QUOREL_CONFIG_MESSAGES_H
#define QUOREL_CONFIG_MESSAGES_H

namespace quorel {
namespace config {

// Assert dialog.
inline constexpr char kMessage_AssertDialogTitle[] = "$$$/private/quorel/debug/DefaultAssertDialogTitle=@0 Debug Event";
inline constexpr char kMessage_AssertCopyButton[] = "$$$/private/quorel/debug/DefaultAssertDialog/CopyButton=Copy";
inline constexpr char kMessage_AssertDebugButton[] = "$$$/private/quorel/debug/DefaultAssertDialog/DebugButton=Debug";
inline constexpr char kMessage_AssertIgnoreOnceButton[] =
    "$$$/private/quorel/debug/DefaultAssertDialog/IgnoreOnceButton=Ignore Once";
inline constexpr char kMessage_AssertIgnoreAlwaysButton[] =
    "$$$/private/quorel/debug/DefaultAssertDialog/IgnoreAlwaysButton=Ignore Always";
inline constexpr char kMessage_AssertDisableAssertsButton[] =
    "$$$/private/quorel/debug/DefaultAssertDialog/DisableAssertsButton=Disable Asserts";
inline constexpr char kMessage_AssertKillProcessButton[] =
    "$$$/private/quorel/debug/DefaultAssertDialog/KillProcessButton=Kill Process";

// Contract (message) dialog.
inline constexpr char kMessage_ContractDialogTitle[] = "$$$/private/quorel/debug/ContractDialogTitle=@0 Debug Event";
inline constexpr char kMessage_ContractContinueButton[] = "$$$/private/quorel/debug/ContractDialog/ContinueButton=Continue";
inline constexpr char kMessage_ContractErrorMessage[] =
    "$$$/private/quorel/debug/ContractDialog/ErrorMessage=@0 has encountered an error.";

// File exceptions.
inline constexpr char kMessage_FileError[] = "$$$/quorel/filesupport/error=Error with file: '@0'.";
inline constexpr char kMessage_FileNotFound[] = "$$$/quorel/filesupport/FileNotFound=The file '@0' could not be found.";
inline constexpr char kMessage_FileDelete[] = "$$$/quorel/filesupport/Delete=Could not delete the file '@0'.";
inline constexpr char kMessage_FileCreate[] = "$$$/quorel/filesupport/Create=Could not create the file '@0'.";
inline constexpr char kMessage_FileCreateNotFound[] =
    "$$$/quorel/filesupport/Create/fnf=Could not create the file '@0'. The file could not be found.";
inline constexpr char kMessage_FileCreateLocked[] =
    "$$$/quorel/filesupport/Create/locked=Could not create the file '@0'. The disk is locked.";
inline constexpr char kMessage_FileCreateAccessDenied[] =
    "$$$/quorel/filesupport/Create/accessdenied=Could not create the file '@0'. Access was denied.";
inline constexpr char kMessage_FileCreateInvalidPath[] =
    "$$$/quorel/filesupport/Create/invalidpath=Could not create the file '@0'. The path is not valid.";
inline constexpr char kMessage_FileRename[] = "$$$/quorel/filesupport/Rename=Could not rename the file '@0' to '@1'.";

// Directory exceptions.
inline constexpr char kMessage_DirError[] = "$$$/quorel/filesupport/Dir/error=Error with Directory: '@0'.";
inline constexpr char kMessage_DirNotFound[] = "$$$/quorel/filesupport/DirNotFound=The directory '@0' could not be found.";
inline constexpr char kMessage_DirDelete[] = "$$$/quorel/filesupport/DirDelete=Could not delete the directory '@0'.";
inline constexpr char kMessage_DirRename[] =
    "$$$/quorel/filesupport/DirRename=Could not rename the directory '@0' to '@1'.";
inline constexpr char kMessage_DirRenameExists[] =
    "$$$/quorel/filesupport/DirRename/exists=Could not rename the directory '@0' to '@1'. "
    "The directory already exists.";

}  // namespace config
}  // namespace quorel

#endif
