// The user's separators from the environment's locale: newlocale() with the
// empty name, then nl_langinfo_l(), decoded in that locale's encoding.
#include "../LocaleSeparators.h"

#include <clocale>
#include <cstring>
#include <cwchar>
#include <langinfo.h>
#include <locale.h>

namespace quorel {
namespace utility {
namespace platform {

namespace {

constexpr unsigned long kFirstSupplementary = 0x10000;
constexpr unsigned short kHighSurrogateBase = 0xD800;

// The first UTF-16 unit of the first character of inSymbol, encoded as in
// inLocale; inFallback for an empty or undecodable symbol.
unsigned short FirstUnit(char const* inSymbol, locale_t inLocale, unsigned short inFallback) noexcept {
    if (inSymbol == nullptr || *inSymbol == 0) {
        return inFallback;
    }
    locale_t const previous = uselocale(inLocale);
    std::mbstate_t state{};
    wchar_t character = 0;
    std::size_t const used = std::mbrtowc(&character, inSymbol, std::strlen(inSymbol), &state);
    uselocale(previous);
    if (used == 0 || used == static_cast<std::size_t>(-1) || used == static_cast<std::size_t>(-2)) {
        return inFallback;
    }
    unsigned long const codePoint = static_cast<unsigned long>(character);
    if (codePoint >= kFirstSupplementary) {
        return static_cast<unsigned short>(kHighSurrogateBase + ((codePoint - kFirstSupplementary) >> 10));
    }
    return static_cast<unsigned short>(codePoint);
}

}  // namespace

void ReadUserNumberSeparators(NumberSeparators& ioSeparators) noexcept {
    locale_t const user = newlocale(LC_NUMERIC_MASK | LC_CTYPE_MASK, "", static_cast<locale_t>(0));
    if (user == static_cast<locale_t>(0)) {
        return;
    }
    ioSeparators.mDecimal = FirstUnit(nl_langinfo_l(RADIXCHAR, user), user, ioSeparators.mDecimal);
    ioSeparators.mThousands = FirstUnit(nl_langinfo_l(THOUSEP, user), user, ioSeparators.mThousands);
    freelocale(user);
}

}  // namespace platform
}  // namespace utility
}  // namespace quorel
