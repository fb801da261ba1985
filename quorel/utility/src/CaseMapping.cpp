#include <quorel/utility/CaseMapping.h>

#include <cstdint>
#include <cstring>

namespace quorel {
namespace utility {

namespace {

struct CaseEntry {
    std::uint16_t mKey;
    std::uint16_t mLower;
    std::uint16_t mUpper[3];   // unused units are 0
    std::uint16_t mFolded[3];  // unused units are 0
};

constexpr CaseEntry kCaseEntries[] = {
#include "CaseTable.generated.inc"
};
constexpr std::size_t kCaseEntryCount = sizeof kCaseEntries / sizeof kCaseEntries[0];
static_assert(kCaseEntryCount == 1446, "the case table has 1,446 entries");

enum CaseForm { kCaseForm_Lower, kCaseForm_Upper, kCaseForm_Folded };

// One mapped form: up to three units.
struct Mapping {
    std::uint8_t mCount;
    std::uint16_t mUnits[3];
};

// The case table in the form lookups use: the three forms of every key in
// arrays indexed by a two-level page table over the 16-bit unit, so a lookup
// is two loads.  Units without an entry map to themselves.
class CaseIndex {
public:
    CaseIndex() {
        std::memset(mPageOfHighByte, 0, sizeof mPageOfHighByte);
        std::memset(mSlots, 0, sizeof mSlots);
        std::uint16_t pages = 1;  // page 0 stays empty: "no entry"
        for (std::size_t i = 0; i < kCaseEntryCount; ++i) {
            CaseEntry const& entry = kCaseEntries[i];
            std::uint8_t& page = mPageOfHighByte[entry.mKey >> 8];
            if (page == 0) {
                page = static_cast<std::uint8_t>(pages++);
            }
            mSlots[page][entry.mKey & 0xFF] = static_cast<std::uint16_t>(i + 1);
            Store(mForms[kCaseForm_Lower][i + 1], &entry.mLower, 1);
            Store(mForms[kCaseForm_Upper][i + 1], entry.mUpper, 3);
            Store(mForms[kCaseForm_Folded][i + 1], entry.mFolded, 3);
        }
    }

    // The mapping of inUnit, or null when the unit is not a key.
    Mapping const* Find(CaseForm inForm, unsigned short inUnit) const noexcept {
        std::uint16_t const slot = mSlots[mPageOfHighByte[inUnit >> 8]][inUnit & 0xFF];
        return slot == 0 ? nullptr : &mForms[inForm][slot];
    }

private:
    static void Store(Mapping& outMapping, std::uint16_t const* inUnits, std::size_t inMax) {
        outMapping.mCount = 0;
        for (std::size_t i = 0; i < inMax && inUnits[i] != 0; ++i) {
            outMapping.mUnits[outMapping.mCount++] = inUnits[i];
        }
    }

    static constexpr std::size_t kMaxPages = 16;
    std::uint8_t mPageOfHighByte[256];
    std::uint16_t mSlots[kMaxPages][256];
    Mapping mForms[3][kCaseEntryCount + 1];
};

// Built once at the first case operation; the language guarantees that two
// threads arriving together both see the one complete table.  It is never
// destroyed, so that case operations keep working during static destruction.
CaseIndex const& Index() {
    static CaseIndex const* const sIndex = new CaseIndex;
    return *sIndex;
}

// Maps ASCII directly; everything else goes through the table.
template <CaseForm Form>
inline unsigned short MapAscii(unsigned short inUnit) noexcept {
    if (Form == kCaseForm_Upper) {
        return (inUnit >= 'a' && inUnit <= 'z') ? static_cast<unsigned short>(inUnit - 0x20) : inUnit;
    }
    return (inUnit >= 'A' && inUnit <= 'Z') ? static_cast<unsigned short>(inUnit + 0x20) : inUnit;
}

template <CaseForm Form>
UTF16String MapCase(UTF16String const& inText) {
    CaseIndex const& index = Index();
    std::size_t const size = inText.size();
    unsigned short const* in = inText.data();
    // Most units map to one unit: start at the input's size and grow only when
    // a multi-unit form (at most three units) needs more room.
    UTF16String result(size, 0);
    std::size_t out = 0;
    for (std::size_t i = 0; i < size; ++i) {
        unsigned short const unit = in[i];
        if (unit < 0x80) {
            result[out++] = MapAscii<Form>(unit);
            continue;
        }
        Mapping const* mapping = index.Find(Form, unit);
        if (mapping == nullptr) {
            result[out++] = unit;
            continue;
        }
        if (out + mapping->mCount > result.size() - (size - i - 1)) {
            result.resize(result.size() + (size - i) + 2);
        }
        for (std::uint8_t k = 0; k < mapping->mCount; ++k) {
            result[out++] = mapping->mUnits[k];
        }
    }
    result.resize(out);
    return result;
}

}  // namespace

UTF16String LowerCase(UTF16String const& inText) { return MapCase<kCaseForm_Lower>(inText); }
UTF16String UpperCase(UTF16String const& inText) { return MapCase<kCaseForm_Upper>(inText); }
UTF16String FoldCase(UTF16String const& inText) { return MapCase<kCaseForm_Folded>(inText); }

void ToLowerCase(UTF16String& ioText) { MapCase<kCaseForm_Lower>(ioText).swap(ioText); }
void ToUpperCase(UTF16String& ioText) { MapCase<kCaseForm_Upper>(ioText).swap(ioText); }
void ToFoldCase(UTF16String& ioText) { MapCase<kCaseForm_Folded>(ioText).swap(ioText); }

}  // namespace utility
}  // namespace quorel
