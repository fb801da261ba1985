// The trace scope of the thread primitives.
//
// Each named operation of quorel::threads (constructors, Join, Wait, the group
// operations, ...) opens a ThreadTraceScope on the stack for as long as it
// runs.  The message of a scope is "<name> - <class> - <operation>", for
// example "Worker - Thread - Join"; a scope writes "Begin - " plus the message
// when it opens and "End - " plus the message when it closes, in the category
// "QRLThreads" at volume 15.
//
// The primitives open their scopes disabled: a disabled scope composes no text,
// allocates nothing and calls nothing, so the scopes cost nothing in the lock
// and thread paths.  An enabled scope composes its texts and hands them to the
// installed ThreadTraceWriter.  That writer is where the trace facility plugs
// in (it decides whether the category and volume are switched on and formats
// the line); until one is installed, an enabled scope only composes its texts.
#ifndef QUOREL_THREADS_THREADTRACESCOPE_H
#define QUOREL_THREADS_THREADTRACESCOPE_H

#include <quorel/utility/Export.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quorel {
namespace threads {

/// The trace category of every scope of the thread primitives.
inline constexpr char kThreadTraceCategory[] = "QRLThreads";
/// The trace volume of every scope of the thread primitives.
constexpr std::int32_t kThreadTraceVolume = 15;

/// Receives the lines of enabled scopes: the category, the volume and the text
/// ("Begin - ..." or "End - ...").  Called on the thread of the scope; must not
/// throw.
using ThreadTraceWriter = void (*)(std::string const& inCategory, std::int32_t inVolume, std::string const& inText);

/// Installs the writer for enabled scopes (null: none) and returns the previous
/// one.  Thread-safe; a scope that is open keeps writing to the writer that is
/// installed when it writes.
QRL_EXPORT ThreadTraceWriter SetThreadTraceWriter(ThreadTraceWriter inWriter) noexcept;

/// A scope of trace around one operation.  On the stack only.
class QRL_EXPORT ThreadTraceScope {
public:
    /// Opens the scope.  The name, class and operation are only read here, and
    /// only when inEnabled is true: then the message is composed and the
    /// "Begin - " line written.
    ThreadTraceScope(std::string_view inCategory, std::int32_t inVolume, std::string_view inName,
                     std::string_view inClass, std::string_view inOperation, bool inEnabled)
        : mVolume(inVolume), mEnabled(inEnabled) {
        if (inEnabled) {
            Begin(inCategory, inName, inClass, inOperation);
        }
    }

    /// Closes the scope; an enabled scope writes its "End - " line.
    ~ThreadTraceScope() {
        if (mEnabled) {
            End();
        }
    }

    ThreadTraceScope(ThreadTraceScope const&) = delete;
    ThreadTraceScope& operator=(ThreadTraceScope const&) = delete;
    static void* operator new(std::size_t) = delete;
    static void* operator new[](std::size_t) = delete;

    bool IsEnabled() const noexcept { return mEnabled; }
    std::int32_t GetVolume() const noexcept { return mVolume; }
    /// The category; empty for a disabled scope.
    std::string const& GetCategory() const noexcept { return mCategory; }
    /// "<name> - <class> - <operation>"; empty for a disabled scope.
    std::string const& GetMessage() const noexcept { return mMessage; }

private:
    void Begin(std::string_view inCategory, std::string_view inName, std::string_view inClass,
               std::string_view inOperation);
    void End() noexcept;

    std::string mCategory;
    std::int32_t mVolume;
    std::string mMessage;
    bool mEnabled;
};

}  // namespace threads
}  // namespace quorel

#endif
