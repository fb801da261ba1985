#include <quorel/config/Localizer.h>
#include <quorel/utility/UnicodeConversion.h>

#include <cstring>
#include <stdexcept>

namespace quorel {
namespace config {

Localizer* Localizer::S_localizerP = nullptr;

Localizer* Localizer::Get() {
    if (S_localizerP == nullptr) {
        throw std::logic_error("quorel::config::Localizer not initialized. Check quorel/config/Localizer.");
    }
    return S_localizerP;
}

void Localizer::Set(Localizer* inLocalizer) { S_localizerP = inLocalizer; }
bool Localizer::Initialized() { return S_localizerP != nullptr; }

Localizer::Localizer() = default;
Localizer::~Localizer() = default;

UTF16String GetLocalizedText(char const* inConstant) {
    if (inConstant == nullptr) {
        return UTF16String();
    }
    if (Localizer::Initialized()) {
        return Localizer::Get()->Localize(inConstant);
    }
    char const* const equals = std::strchr(inConstant, '=');
    return utility::AsciiToUTF16(equals != nullptr ? equals + 1 : inConstant);
}

}  // namespace config
}  // namespace quorel
