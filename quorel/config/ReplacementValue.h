// One value of an error message's placeholders ("^1" to "^4").
#ifndef QUOREL_CONFIG_REPLACEMENTVALUE_H
#define QUOREL_CONFIG_REPLACEMENTVALUE_H

#include <quorel/utility/Export.h>
#include <quorel/utility/UnicodeString.h>

#include <cstdint>

namespace quorel {
namespace config {

/// A tagged value: nothing, a signed or unsigned 64-bit integer, a double or a
/// text.  Only the member named by the kind is live; the others are zero or
/// empty.  Narrower integers are widened (signed ones sign-extended).  There is
/// deliberately no constructor from a narrow string: convert it first.
class QRL_EXPORT ReplacementValue {
public:
    enum Kind : std::int32_t {
        kKind_None = 0,
        kKind_Signed = 1,
        kKind_Unsigned = 2,
        kKind_Double = 3,
        kKind_Text = 4
    };

    ReplacementValue() noexcept;
    ReplacementValue(int inValue) noexcept;
    ReplacementValue(long inValue) noexcept;
    ReplacementValue(long long inValue) noexcept;
    ReplacementValue(unsigned int inValue) noexcept;
    ReplacementValue(unsigned long inValue) noexcept;
    ReplacementValue(unsigned long long inValue) noexcept;
    ReplacementValue(double inValue) noexcept;
    ReplacementValue(UTF16String const& inText);
    ReplacementValue(ReplacementValue const& inOther);
    ReplacementValue& operator=(ReplacementValue const& inOther);
    ~ReplacementValue();

    /// Sets the three numeric members to zero; the kind and the text stay.
    void Init() noexcept;

    Kind GetKind() const noexcept { return mKind; }
    std::uint64_t GetUnsigned() const noexcept { return mUnsignedValue; }
    std::int64_t GetSigned() const noexcept { return mSignedValue; }
    double GetDouble() const noexcept { return mDoubleValue; }
    UTF16String const& GetText() const noexcept { return mText; }

private:
    void SetSigned(std::int64_t inValue) noexcept;
    void SetUnsigned(std::uint64_t inValue) noexcept;

    Kind mKind;
    std::uint64_t mUnsignedValue;
    std::int64_t mSignedValue;
    double mDoubleValue;
    UTF16String mText;
};

}  // namespace config
}  // namespace quorel

#endif
