// Identifiers from libuuid.  Its 16 bytes hold the fields in network byte
// order (time_low, time_mid, time_hi_and_version, then the 8 bytes of clock
// sequence and node), which is the order in which the text form writes
// Data1, Data2, Data3 and Data4.
#include "../GuidPlatform.h"

#include <uuid/uuid.h>

#include <cstring>

namespace quorel {
namespace utility {
namespace platform {

namespace {

void ToFields(uuid_t const inBytes, GuidFields& outFields) {
    outFields.Data1 = (static_cast<std::uint32_t>(inBytes[0]) << 24) | (static_cast<std::uint32_t>(inBytes[1]) << 16) |
                      (static_cast<std::uint32_t>(inBytes[2]) << 8) | inBytes[3];
    outFields.Data2 = static_cast<std::uint16_t>((inBytes[4] << 8) | inBytes[5]);
    outFields.Data3 = static_cast<std::uint16_t>((inBytes[6] << 8) | inBytes[7]);
    std::memcpy(outFields.Data4, inBytes + 8, sizeof outFields.Data4);
}

void ToBytes(GuidFields const& inFields, uuid_t outBytes) {
    outBytes[0] = static_cast<unsigned char>(inFields.Data1 >> 24);
    outBytes[1] = static_cast<unsigned char>(inFields.Data1 >> 16);
    outBytes[2] = static_cast<unsigned char>(inFields.Data1 >> 8);
    outBytes[3] = static_cast<unsigned char>(inFields.Data1);
    outBytes[4] = static_cast<unsigned char>(inFields.Data2 >> 8);
    outBytes[5] = static_cast<unsigned char>(inFields.Data2);
    outBytes[6] = static_cast<unsigned char>(inFields.Data3 >> 8);
    outBytes[7] = static_cast<unsigned char>(inFields.Data3);
    std::memcpy(outBytes + 8, inFields.Data4, sizeof inFields.Data4);
}

}  // namespace

bool GenerateGuid(GuidFields& outFields) noexcept {
    uuid_t bytes;
    uuid_generate_random(bytes);
    ToFields(bytes, outFields);
    return true;
}

bool ParseGuid(char const* inText, std::size_t inLength, GuidFields& outFields) noexcept {
    if (inText == nullptr || inLength != kGuidTextLength) {
        return false;
    }
    char text[kGuidTextLength + 1];
    std::memcpy(text, inText, kGuidTextLength);
    text[kGuidTextLength] = 0;
    if (std::strlen(text) != kGuidTextLength) {
        return false;
    }
    uuid_t bytes;
    if (uuid_parse(text, bytes) != 0) {
        return false;
    }
    ToFields(bytes, outFields);
    return true;
}

bool FormatGuid(GuidFields const& inFields, char (&outText)[kGuidTextLength + 1]) noexcept {
    uuid_t bytes;
    ToBytes(inFields, bytes);
    outText[0] = 0;
    uuid_unparse_lower(bytes, outText);
    return std::strlen(outText) == kGuidTextLength;
}

}  // namespace platform
}  // namespace utility
}  // namespace quorel
