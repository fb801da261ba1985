#include <quorel/config/Errors.h>
#include <quorel/utility/Guid.h>
#include <quorel/utility/UnicodeConversion.h>

#include "GuidPlatform.h"

#include <cstring>

namespace quorel {
namespace utility {

namespace {

void ReportError(char const* inMessage, std::int32_t inErrorNumber) {
    config::ThrowError(config::kErrorLevel_NonFatal, inMessage, config::kErrorModule_Utility, inErrorNumber, true);
}

// A half of Data4 as a signed number whose first byte is the least significant.
std::int32_t Data4Half(GuidFields const& inFields, int inHalf) {
    std::uint8_t const* bytes = inFields.Data4 + 4 * inHalf;
    std::uint32_t const value = bytes[0] | (static_cast<std::uint32_t>(bytes[1]) << 8) |
                                (static_cast<std::uint32_t>(bytes[2]) << 16) |
                                (static_cast<std::uint32_t>(bytes[3]) << 24);
    return static_cast<std::int32_t>(value);
}

}  // namespace

Guid::Guid() noexcept : mFields() {}

Guid::Guid(std::uint32_t inData1, std::uint16_t inData2, std::uint16_t inData3, std::uint8_t inData4_0,
           std::uint8_t inData4_1, std::uint8_t inData4_2, std::uint8_t inData4_3, std::uint8_t inData4_4,
           std::uint8_t inData4_5, std::uint8_t inData4_6, std::uint8_t inData4_7) noexcept
    : mFields{inData1,
              inData2,
              inData3,
              {inData4_0, inData4_1, inData4_2, inData4_3, inData4_4, inData4_5, inData4_6, inData4_7}} {}

Guid::Guid(GuidFields const& inFields) noexcept : mFields(inFields) {}

Guid::Guid(char const* inText) : mFields() { Parse(inText, inText != nullptr ? std::strlen(inText) : 0); }

Guid::Guid(std::string const& inText) : mFields() { Parse(inText.data(), inText.size()); }

Guid::Guid(UTF16String const& inText) : mFields() {
    UTF8String const text = UTF16to8(inText);
    Parse(reinterpret_cast<char const*>(text.data()), text.size());
}

void Guid::Parse(char const* inText, std::size_t inLength) {
    if (!platform::ParseGuid(inText, inLength, mFields)) {
        ReportError(config::kErrorMessage_MalformedGUID, config::kErrorNumber_MalformedGUID);
    }
}

UTF16String Guid::AsString() const {
    char text[platform::kGuidTextLength + 1];
    if (!platform::FormatGuid(mFields, text)) {
        ReportError(config::kErrorMessage_StringToGUIDFailed, config::kErrorNumber_StringToGUIDFailed);
        return UTF16String();
    }
    return AsciiToUTF16(text);
}

Guid Guid::CreateUnique() {
    Guid result;
    if (!platform::GenerateGuid(result.mFields)) {
        ReportError(config::kErrorMessage_CouldntCreateGUID, config::kErrorNumber_CouldntCreateGUID);
    }
    return result;
}

void Guid::GuidToComponents(Guid const& inGuid, std::uint32_t& outData1, std::uint16_t& outData2,
                            std::uint16_t& outData3, std::uint8_t& outData4_0, std::uint8_t& outData4_1,
                            std::uint8_t& outData4_2, std::uint8_t& outData4_3, std::uint8_t& outData4_4,
                            std::uint8_t& outData4_5, std::uint8_t& outData4_6, std::uint8_t& outData4_7) {
    GuidFields const& fields = inGuid.mFields;
    outData1 = fields.Data1;
    outData2 = fields.Data2;
    outData3 = fields.Data3;
    std::uint8_t* const outs[8] = {&outData4_0, &outData4_1, &outData4_2, &outData4_3,
                                   &outData4_4, &outData4_5, &outData4_6, &outData4_7};
    for (int i = 0; i < 8; ++i) {
        *outs[i] = fields.Data4[i];
    }
}

bool operator==(Guid const& inA, Guid const& inB) noexcept {
    GuidFields const& a = inA.GetGUID();
    GuidFields const& b = inB.GetGUID();
    return a.Data1 == b.Data1 && a.Data2 == b.Data2 && a.Data3 == b.Data3 &&
           std::memcmp(a.Data4, b.Data4, sizeof a.Data4) == 0;
}

bool operator!=(Guid const& inA, Guid const& inB) noexcept { return !(inA == inB); }

bool operator<(Guid const& inA, Guid const& inB) noexcept {
    GuidFields const& a = inA.GetGUID();
    GuidFields const& b = inB.GetGUID();
    if (a.Data1 != b.Data1) {
        return a.Data1 < b.Data1;
    }
    if (a.Data2 != b.Data2) {
        return a.Data2 < b.Data2;
    }
    if (a.Data3 != b.Data3) {
        return a.Data3 < b.Data3;
    }
    for (int half = 0; half < 2; ++half) {
        std::int32_t const left = Data4Half(a, half);
        std::int32_t const right = Data4Half(b, half);
        if (left != right) {
            return left < right;
        }
    }
    return false;
}

bool operator>(Guid const& inA, Guid const& inB) noexcept { return inB < inA; }

std::ostream& operator<<(std::ostream& ioStream, Guid const& inGuid) {
    UTF8String const text = UTF16to8(inGuid.AsString());
    return ioStream << std::string(text.begin(), text.end());
}

UTF16BasicOStream& operator<<(UTF16BasicOStream& ioStream, Guid const& inGuid) {
    return ioStream << inGuid.AsString();
}

std::istream& operator>>(std::istream& ioStream, Guid& ioGuid) {
    std::string word;
    if (ioStream >> word) {
        ioGuid = Guid(word);
    }
    return ioStream;
}

UTF16BasicIStream& operator>>(UTF16BasicIStream& ioStream, Guid& ioGuid) {
    UTF16String word;
    if (ioStream >> word) {
        ioGuid = Guid(word);
    }
    return ioStream;
}

}  // namespace utility
}  // namespace quorel
