// The big-endian wire form of values and the stream-to-stream copy.
#include <quorel/filesupport/ByteStreamErrors.h>
#include <quorel/filesupport/ByteStreamOperators.h>

#include <cstring>
#include <ios>
#include <limits>
#include <sstream>
#include <type_traits>

namespace quorel {
namespace filesupport {

namespace {

// The unsigned pattern of inValue, inBytes bytes wide, most significant first.
template <std::size_t inBytes>
void WriteBigEndian(OByteStream& ioStream, std::uint64_t inValue) {
    unsigned char bytes[inBytes];
    for (std::size_t i = 0; i < inBytes; ++i) {
        bytes[i] = static_cast<unsigned char>(inValue >> (8 * (inBytes - 1 - i)));
    }
    ioStream.WriteBlock(bytes, inBytes);
}

// Reads byte by byte, so that a stream's end is always seen through Get.
template <std::size_t inBytes>
std::uint64_t ReadBigEndian(IByteStream& ioStream) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < inBytes; ++i) {
        value = (value << 8) | ioStream.Get();
    }
    return value;
}

template <class T>
IByteStream& ReadInteger(IByteStream& ioStream, T& outValue) {
    using Unsigned = std::make_unsigned_t<T>;
    outValue = static_cast<T>(static_cast<Unsigned>(ReadBigEndian<sizeof(T)>(ioStream)));
    return ioStream;
}

template <class T>
OByteStream& WriteInteger(OByteStream& ioStream, T inValue) {
    using Unsigned = std::make_unsigned_t<T>;
    WriteBigEndian<sizeof(T)>(ioStream, static_cast<Unsigned>(inValue));
    return ioStream;
}

// The length prefix: the low 16 bits of the length.
template <class String>
std::size_t WriteLengthPrefix(OByteStream& ioStream, String const& inText) {
    std::size_t const count = inText.size() & 0xFFFFu;
    WriteBigEndian<2>(ioStream, count);
    return count;
}

std::size_t ReadLengthPrefix(IByteStream& ioStream) { return static_cast<std::size_t>(ReadBigEndian<2>(ioStream)); }

template <class T>
std::string FormatFloat(T inValue) {
    std::ostringstream text;
    text.precision(36);
    text << inValue;
    return text.str();
}

// The non-finite texts that FormatFloat writes, which extraction rejects.
template <class T>
bool ParseNonFinite(std::string const& inText, T& outValue) {
    bool const negative = !inText.empty() && inText[0] == '-';
    std::string const body = inText.substr(negative ? 1 : 0);
    if (body == "inf") {
        outValue = negative ? -std::numeric_limits<T>::infinity() : std::numeric_limits<T>::infinity();
    } else if (body == "nan") {
        outValue = negative ? -std::numeric_limits<T>::quiet_NaN() : std::numeric_limits<T>::quiet_NaN();
    } else {
        return false;
    }
    return true;
}

template <class T>
IByteStream& ReadFloat(IByteStream& ioStream, T& outValue) {
    std::string text;
    ioStream >> text;
    std::istringstream parser(text);
    parser >> outValue;
    if (parser.fail()) {
        ParseNonFinite(text, outValue);
    }
    return ioStream;
}

}  // namespace

IByteStream& operator>>(IByteStream& ioStream, bool& outValue) {
    outValue = ioStream.Get() != 0;
    return ioStream;
}
IByteStream& operator>>(IByteStream& ioStream, char& outValue) { return ReadInteger(ioStream, outValue); }
IByteStream& operator>>(IByteStream& ioStream, signed char& outValue) { return ReadInteger(ioStream, outValue); }
IByteStream& operator>>(IByteStream& ioStream, unsigned char& outValue) { return ReadInteger(ioStream, outValue); }
IByteStream& operator>>(IByteStream& ioStream, short& outValue) { return ReadInteger(ioStream, outValue); }
IByteStream& operator>>(IByteStream& ioStream, unsigned short& outValue) { return ReadInteger(ioStream, outValue); }
IByteStream& operator>>(IByteStream& ioStream, std::int32_t& outValue) { return ReadInteger(ioStream, outValue); }
IByteStream& operator>>(IByteStream& ioStream, std::uint32_t& outValue) { return ReadInteger(ioStream, outValue); }
IByteStream& operator>>(IByteStream& ioStream, std::int64_t& outValue) { return ReadInteger(ioStream, outValue); }
IByteStream& operator>>(IByteStream& ioStream, std::uint64_t& outValue) { return ReadInteger(ioStream, outValue); }
IByteStream& operator>>(IByteStream& ioStream, float& outValue) { return ReadFloat(ioStream, outValue); }
IByteStream& operator>>(IByteStream& ioStream, double& outValue) { return ReadFloat(ioStream, outValue); }
IByteStream& operator>>(IByteStream& ioStream, long double& outValue) { return ReadFloat(ioStream, outValue); }

IByteStream& operator>>(IByteStream& ioStream, std::string& outValue) {
    outValue.clear();
    std::size_t const count = ReadLengthPrefix(ioStream);
    for (std::size_t i = 0; i < count; ++i) {
        outValue.push_back(static_cast<char>(ioStream.Get()));
    }
    return ioStream;
}

IByteStream& operator>>(IByteStream& ioStream, UTF16String& outValue) {
    outValue.clear();
    std::size_t const count = ReadLengthPrefix(ioStream);
    for (std::size_t i = 0; i < count; ++i) {
        outValue.push_back(static_cast<unsigned short>(ReadBigEndian<2>(ioStream)));
    }
    return ioStream;
}

OByteStream& operator<<(OByteStream& ioStream, bool const& inValue) {
    ioStream.Put(inValue ? 1 : 0);
    return ioStream;
}
OByteStream& operator<<(OByteStream& ioStream, char const& inValue) { return WriteInteger(ioStream, inValue); }
OByteStream& operator<<(OByteStream& ioStream, signed char const& inValue) { return WriteInteger(ioStream, inValue); }
OByteStream& operator<<(OByteStream& ioStream, unsigned char const& inValue) { return WriteInteger(ioStream, inValue); }
OByteStream& operator<<(OByteStream& ioStream, short const& inValue) { return WriteInteger(ioStream, inValue); }
OByteStream& operator<<(OByteStream& ioStream, unsigned short const& inValue) {
    return WriteInteger(ioStream, inValue);
}
OByteStream& operator<<(OByteStream& ioStream, std::int32_t const& inValue) { return WriteInteger(ioStream, inValue); }
OByteStream& operator<<(OByteStream& ioStream, std::uint32_t const& inValue) { return WriteInteger(ioStream, inValue); }
OByteStream& operator<<(OByteStream& ioStream, std::int64_t const& inValue) { return WriteInteger(ioStream, inValue); }
OByteStream& operator<<(OByteStream& ioStream, std::uint64_t const& inValue) { return WriteInteger(ioStream, inValue); }
OByteStream& operator<<(OByteStream& ioStream, float const& inValue) {
    return ioStream << FormatFloat(static_cast<double>(inValue));
}
OByteStream& operator<<(OByteStream& ioStream, double const& inValue) { return ioStream << FormatFloat(inValue); }
OByteStream& operator<<(OByteStream& ioStream, long double const& inValue) { return ioStream << FormatFloat(inValue); }

OByteStream& operator<<(OByteStream& ioStream, std::string const& inValue) {
    std::size_t const count = WriteLengthPrefix(ioStream, inValue);
    ioStream.WriteBlock(reinterpret_cast<unsigned char const*>(inValue.data()), static_cast<std::uint32_t>(count));
    return ioStream;
}

OByteStream& operator<<(OByteStream& ioStream, UTF16String const& inValue) {
    std::size_t const count = WriteLengthPrefix(ioStream, inValue);
    std::string bytes(2 * count, '\0');
    for (std::size_t i = 0; i < count; ++i) {
        bytes[2 * i] = static_cast<char>(inValue[i] >> 8);
        bytes[2 * i + 1] = static_cast<char>(inValue[i] & 0xFF);
    }
    ioStream.WriteBlock(reinterpret_cast<unsigned char const*>(bytes.data()), static_cast<std::uint32_t>(bytes.size()));
    return ioStream;
}

#if LONG_MAX > INT_MAX && LLONG_MAX == LONG_MAX
IByteStream& operator>>(IByteStream& ioStream, long long& outValue) { return ReadInteger(ioStream, outValue); }
IByteStream& operator>>(IByteStream& ioStream, unsigned long long& outValue) { return ReadInteger(ioStream, outValue); }
OByteStream& operator<<(OByteStream& ioStream, long long const& inValue) { return WriteInteger(ioStream, inValue); }
OByteStream& operator<<(OByteStream& ioStream, unsigned long long const& inValue) {
    return WriteInteger(ioStream, inValue);
}
#endif

OByteStream& operator<<(OByteStream& ioTarget, IByteStream& inSource) {
    std::uint64_t const length = inSource.Length();
    if (length != 0) {
        for (std::uint64_t i = 0; i < length; ++i) {
            ioTarget.Put(inSource.Get());
        }
        return ioTarget;
    }
    for (;;) {
        unsigned char byte;
        try {
            byte = inSource.Get();
        } catch (eof_error const&) {
            return ioTarget;  // the end of a source of unknown length ends the copy
        }
        ioTarget.Put(byte);  // an eof_error of the target is the caller's
    }
}

}  // namespace filesupport
}  // namespace quorel
