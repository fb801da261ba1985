// 128-bit identifiers with their standard text form.
#ifndef QUOREL_UTILITY_GUID_H
#define QUOREL_UTILITY_GUID_H

#include <quorel/utility/Export.h>
#include <quorel/utility/TextStreams.h>
#include <quorel/utility/UnicodeString.h>

#include <cstdint>
#include <istream>
#include <ostream>
#include <string>

namespace quorel {
namespace utility {

/// The fields of an identifier, laid out as the platform structure of the
/// same name's fields: Data1 to Data4 in this order, 16 bytes.
struct GuidFields {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];
};

/// A 128-bit identifier value.
///
/// Its text form has 36 characters: 5 groups of 8, 4, 4, 4 and 12 hexadecimal
/// digits separated by "-", without braces.  Data1, Data2 and Data3 are
/// written as numbers, Data4 byte by byte (its first two bytes make the fourth
/// group).  Output is lower case; input may be in either case, and anything
/// else (braces, another length) is malformed.
///
/// Failures are reported through config::ThrowError, non-fatal, module 105:
/// 27 when no new value can be made, 28 for malformed text, 29 when the text
/// form can't be made.  If the error manager returns, the operation goes on:
/// a Guid made from malformed text is then all zeros.
class QRL_EXPORT Guid {
public:
    /// All zeros.
    Guid() noexcept;
    /// The fields in order.
    Guid(std::uint32_t inData1, std::uint16_t inData2, std::uint16_t inData3, std::uint8_t inData4_0,
         std::uint8_t inData4_1, std::uint8_t inData4_2, std::uint8_t inData4_3, std::uint8_t inData4_4,
         std::uint8_t inData4_5, std::uint8_t inData4_6, std::uint8_t inData4_7) noexcept;
    Guid(Guid const& inOther) noexcept = default;
    /// A copy of the fields.
    explicit Guid(GuidFields const& inFields) noexcept;
    /// Parses the nul-terminated text form; null is malformed.
    explicit Guid(char const* inText);
    /// Parses the text form (a nul inside the string makes it malformed).
    explicit Guid(std::string const& inText);
    /// Converts with UTF16to8, then parses the text form.
    explicit Guid(UTF16String const& inText);

    Guid& operator=(Guid const& inOther) noexcept = default;

    /// The held fields.
    GuidFields const& GetGUID() const noexcept { return mFields; }

    /// The text form, lower case.
    UTF16String AsString() const;

    /// A new unique value (random, version 4).
    static Guid CreateUnique();

    /// Writes the fields out in the order of the constructor's arguments.
    static void GuidToComponents(Guid const& inGuid, std::uint32_t& outData1, std::uint16_t& outData2,
                                 std::uint16_t& outData3, std::uint8_t& outData4_0, std::uint8_t& outData4_1,
                                 std::uint8_t& outData4_2, std::uint8_t& outData4_3, std::uint8_t& outData4_4,
                                 std::uint8_t& outData4_5, std::uint8_t& outData4_6, std::uint8_t& outData4_7);

private:
    void Parse(char const* inText, std::size_t inLength);

    GuidFields mFields;
};

/// Equality of all 16 bytes.
QRL_EXPORT bool operator==(Guid const& inA, Guid const& inB) noexcept;
QRL_EXPORT bool operator!=(Guid const& inA, Guid const& inB) noexcept;

/// An order for keys: Data1, Data2 and Data3 as unsigned numbers, then each
/// half of Data4 as a signed 32-bit number whose first byte is the least
/// significant.  So 0x80 in Data4[3] sorts before 0x7F there.
QRL_EXPORT bool operator<(Guid const& inA, Guid const& inB) noexcept;
/// inB < inA.
QRL_EXPORT bool operator>(Guid const& inA, Guid const& inB) noexcept;

/// Writes the text form.
QRL_EXPORT std::ostream& operator<<(std::ostream& ioStream, Guid const& inGuid);
/// Writes the text form (to an oUTF16StringStream, for example).
QRL_EXPORT UTF16BasicOStream& operator<<(UTF16BasicOStream& ioStream, Guid const& inGuid);

/// Reads one white-space-delimited word and parses it.  When no word can be
/// read, the stream fails as string extraction does and ioGuid is unchanged.
QRL_EXPORT std::istream& operator>>(std::istream& ioStream, Guid& ioGuid);
/// The same for a UTF-16 stream (an iUTF16StringStream, for example).
QRL_EXPORT UTF16BasicIStream& operator>>(UTF16BasicIStream& ioStream, Guid& ioGuid);

}  // namespace utility
}  // namespace quorel

#endif
