#include <quorel/config/ReplacementValue.h>

namespace quorel {
namespace config {

ReplacementValue::ReplacementValue() noexcept
    : mKind(kKind_None), mUnsignedValue(0), mSignedValue(0), mDoubleValue(0.0) {}

ReplacementValue::ReplacementValue(int inValue) noexcept : ReplacementValue() { SetSigned(inValue); }
ReplacementValue::ReplacementValue(long inValue) noexcept : ReplacementValue() { SetSigned(inValue); }
ReplacementValue::ReplacementValue(long long inValue) noexcept : ReplacementValue() { SetSigned(inValue); }
ReplacementValue::ReplacementValue(unsigned int inValue) noexcept : ReplacementValue() { SetUnsigned(inValue); }
ReplacementValue::ReplacementValue(unsigned long inValue) noexcept : ReplacementValue() { SetUnsigned(inValue); }
ReplacementValue::ReplacementValue(unsigned long long inValue) noexcept : ReplacementValue() {
    SetUnsigned(inValue);
}

ReplacementValue::ReplacementValue(double inValue) noexcept : ReplacementValue() {
    mKind = kKind_Double;
    mDoubleValue = inValue;
}

ReplacementValue::ReplacementValue(UTF16String const& inText)
    : mKind(kKind_Text), mUnsignedValue(0), mSignedValue(0), mDoubleValue(0.0), mText(inText) {}

ReplacementValue::ReplacementValue(ReplacementValue const& inOther) = default;
ReplacementValue& ReplacementValue::operator=(ReplacementValue const& inOther) = default;
ReplacementValue::~ReplacementValue() = default;

void ReplacementValue::Init() noexcept {
    mUnsignedValue = 0;
    mSignedValue = 0;
    mDoubleValue = 0.0;
}

void ReplacementValue::SetSigned(std::int64_t inValue) noexcept {
    mKind = kKind_Signed;
    mSignedValue = inValue;
}

void ReplacementValue::SetUnsigned(std::uint64_t inValue) noexcept {
    mKind = kKind_Unsigned;
    mUnsignedValue = inValue;
}

}  // namespace config
}  // namespace quorel
