// Character traits for the code units of quorel's strings and text streams.
//
// The standard library only promises traits for its own character types, so
// quorel brings its own for unsigned char (UTF-8) and unsigned short (UTF-16).
// They order units as unsigned numbers, so strings compare by code unit.
#ifndef QUOREL_UTILITY_CODEUNITTRAITS_H
#define QUOREL_UTILITY_CODEUNITTRAITS_H

#include <cstddef>
#include <cstring>
#include <cwchar>
#include <ios>

namespace quorel {

template <class Unit>
struct CodeUnitTraits {
    using char_type = Unit;
    using int_type = int;  // wide enough for every unit and for eof()
    using off_type = std::streamoff;
    using pos_type = std::streampos;
    using state_type = std::mbstate_t;

    static constexpr void assign(char_type& outUnit, char_type const& inUnit) noexcept { outUnit = inUnit; }
    static constexpr bool eq(char_type inA, char_type inB) noexcept { return inA == inB; }
    static constexpr bool lt(char_type inA, char_type inB) noexcept { return inA < inB; }

    static constexpr int compare(char_type const* inA, char_type const* inB, std::size_t inCount) noexcept {
        for (std::size_t i = 0; i < inCount; ++i) {
            if (inA[i] != inB[i]) {
                return inA[i] < inB[i] ? -1 : 1;
            }
        }
        return 0;
    }

    static constexpr std::size_t length(char_type const* inText) noexcept {
        std::size_t count = 0;
        while (inText[count] != char_type()) {
            ++count;
        }
        return count;
    }

    static constexpr char_type const* find(char_type const* inText, std::size_t inCount,
                                           char_type const& inUnit) noexcept {
        for (std::size_t i = 0; i < inCount; ++i) {
            if (inText[i] == inUnit) {
                return inText + i;
            }
        }
        return nullptr;
    }

    static char_type* move(char_type* outDest, char_type const* inSource, std::size_t inCount) noexcept {
        if (inCount != 0) {
            std::memmove(outDest, inSource, inCount * sizeof(char_type));
        }
        return outDest;
    }

    static char_type* copy(char_type* outDest, char_type const* inSource, std::size_t inCount) noexcept {
        if (inCount != 0) {
            std::memcpy(outDest, inSource, inCount * sizeof(char_type));
        }
        return outDest;
    }

    static char_type* assign(char_type* outDest, std::size_t inCount, char_type inUnit) noexcept {
        for (std::size_t i = 0; i < inCount; ++i) {
            outDest[i] = inUnit;
        }
        return outDest;
    }

    static constexpr int_type eof() noexcept { return -1; }
    static constexpr int_type not_eof(int_type inValue) noexcept { return inValue == eof() ? 0 : inValue; }
    static constexpr char_type to_char_type(int_type inValue) noexcept { return static_cast<char_type>(inValue); }
    static constexpr int_type to_int_type(char_type inUnit) noexcept { return static_cast<int_type>(inUnit); }
    static constexpr bool eq_int_type(int_type inA, int_type inB) noexcept { return inA == inB; }
};

}  // namespace quorel

#endif
