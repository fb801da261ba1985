#include <quorel/utility/CaseMapping.h>

#include "AsciiBlocks.h"

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

enum CaseForm { kCaseForm_Lower, kCaseForm_Upper, kCaseForm_Folded, kCaseFormCount };

// One mapped form: up to three units.
struct Mapping {
    std::uint8_t mCount;
    std::uint16_t mUnits[3];
};

// The case table in the form lookups use.  A two-level page table over the
// 16-bit unit gives, for each form, the difference between a unit and its
// mapped unit (0 for units without an entry, whose pages all share one page of
// zeros), so that the common lookup is two loads and an addition.  Forms of
// two or three units carry kSeeMapping there and are read from the full
// mappings.
class CaseIndex {
public:
    // Marks a unit whose form is in mForms.  Any single-unit mapping whose
    // difference happens to be this value is simply read from mForms too.
    static constexpr std::uint16_t kSeeMapping = 0x8000;

    CaseIndex() {
        std::memset(mPageOfHighByte, 0, sizeof mPageOfHighByte);
        std::memset(mSlots, 0, sizeof mSlots);
        std::memset(mDeltas, 0, sizeof mDeltas);
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
            for (int form = 0; form < kCaseFormCount; ++form) {
                mDeltas[form][page][entry.mKey & 0xFF] = Delta(entry.mKey, mForms[form][i + 1]);
            }
        }
        FindLongestKeylessRange();
        for (int form = 0; form < kCaseFormCount; ++form) {
            mLatin1Valid[form] = RuleMatchesTable(static_cast<CaseForm>(form));
        }
    }

    // The mapping of inUnit, or null when the unit is not a key.
    Mapping const* Find(CaseForm inForm, unsigned short inUnit) const noexcept {
        std::uint16_t const slot = mSlots[mPageOfHighByte[inUnit >> 8]][inUnit & 0xFF];
        return slot == 0 ? nullptr : &mForms[inForm][slot];
    }

    // What to add to inUnit for its single-unit form, or kSeeMapping.
    template <CaseForm Form>
    std::uint16_t DeltaOf(unsigned short inUnit) const noexcept {
        return mDeltas[Form][mPageOfHighByte[inUnit >> 8]][inUnit & 0xFF];
    }

    // The rule for whole blocks of Latin-1 text, or null where the table would
    // not agree with it.
    template <CaseForm Form>
    ascii::Latin1CaseRule const* Latin1Rule() const noexcept {
        return mLatin1Valid[Form] ? &kLatin1Rules[Form] : nullptr;
    }

    // The longest range of units without an entry (CJK, Hangul and most
    // symbols lie in it): blocks within it are copied without lookups.
    unsigned short KeylessFirst() const noexcept { return mKeylessFirst; }
    unsigned short KeylessLast() const noexcept { return mKeylessLast; }

private:
    static constexpr std::size_t kMaxPages = 16;

    static void Store(Mapping& outMapping, std::uint16_t const* inUnits, std::size_t inMax) {
        outMapping.mCount = 0;
        for (std::size_t i = 0; i < inMax && inUnits[i] != 0; ++i) {
            outMapping.mUnits[outMapping.mCount++] = inUnits[i];
        }
    }

    static std::uint16_t Delta(std::uint16_t inKey, Mapping const& inMapping) {
        if (inMapping.mCount != 1) {
            return kSeeMapping;
        }
        return static_cast<std::uint16_t>(inMapping.mUnits[0] - inKey);
    }

    // The Latin-1 letters move by 0x20 between the cases, but for the
    // multiplication and division signs in their midst; the refused units have
    // other forms (U+00B5 folds and upper-cases to Greek mu, U+00DF has two
    // units, U+00FF upper-cases to U+0178).  0x100 fills unused places.
    static constexpr ascii::Latin1CaseRule kLatin1Rules[kCaseFormCount] = {
        {{0x41, 0xC0}, {0x5A, 0xDE}, 0xD7, {0x100, 0x100, 0x100}, 0x20},   // lower
        {{0x61, 0xE0}, {0x7A, 0xFE}, 0xF7, {0xB5, 0xDF, 0xFF}, -0x20},     // upper
        {{0x41, 0xC0}, {0x5A, 0xDE}, 0xD7, {0xB5, 0xDF, 0x100}, 0x20},     // folded
    };

    // Whether the Latin-1 rule of inForm gives what the table gives for every
    // unit below U+0100 that it does not refuse.
    bool RuleMatchesTable(CaseForm inForm) const {
        ascii::Latin1CaseRule const& rule = kLatin1Rules[inForm];
        for (unsigned int unit = 0; unit < 0x100; ++unit) {
            if (unit == rule.mRefused[0] || unit == rule.mRefused[1] || unit == rule.mRefused[2]) {
                continue;
            }
            bool const moves = unit != rule.mSkip && ((unit >= rule.mFirst[0] && unit <= rule.mLast[0]) ||
                                                      (unit >= rule.mFirst[1] && unit <= rule.mLast[1]));
            unsigned int const expected = moves ? unit + rule.mDelta : unit;
            Mapping const* const mapping = Find(inForm, static_cast<unsigned short>(unit));
            unsigned int const actual = mapping == nullptr ? unit : mapping->mUnits[0];
            if ((mapping != nullptr && mapping->mCount != 1) || actual != expected) {
                return false;
            }
        }
        return true;
    }

    void FindLongestKeylessRange() {
        std::uint32_t bestFirst = 0;
        std::uint32_t bestLength = 0;
        std::uint32_t first = 0;
        for (std::uint32_t unit = 0; unit <= 0x10000; ++unit) {
            if (unit == 0x10000 || Find(kCaseForm_Lower, static_cast<unsigned short>(unit)) != nullptr) {
                if (unit - first > bestLength) {
                    bestFirst = first;
                    bestLength = unit - first;
                }
                first = unit + 1;
            }
        }
        mKeylessFirst = static_cast<unsigned short>(bestFirst);
        mKeylessLast = static_cast<unsigned short>(bestFirst + bestLength - 1);
    }

    std::uint8_t mPageOfHighByte[256];
    std::uint16_t mSlots[kMaxPages][256];
    std::uint16_t mDeltas[kCaseFormCount][kMaxPages][256];
    Mapping mForms[kCaseFormCount][kCaseEntryCount + 1];
    bool mLatin1Valid[kCaseFormCount];
    unsigned short mKeylessFirst = 0;
    unsigned short mKeylessLast = 0;
};

// Built once at the first case operation; the language guarantees that two
// threads arriving together both see the one complete table.  It is never
// destroyed, so that case operations keep working during static destruction.
CaseIndex const& Index() {
    static CaseIndex const* const sIndex = new CaseIndex;
    return *sIndex;
}

// The ASCII letters that a form changes, and by how much.
template <CaseForm Form>
struct AsciiShift {
    static constexpr unsigned short kFirst = Form == kCaseForm_Upper ? 'a' : 'A';
    static constexpr unsigned short kLast = Form == kCaseForm_Upper ? 'z' : 'Z';
    static constexpr short kDelta = Form == kCaseForm_Upper ? -0x20 : 0x20;
};

// Maps one unit (not ASCII-block material) into outUnits, which has room for
// three units, and returns the end of its form.
template <CaseForm Form>
inline unsigned short* MapOne(CaseIndex const& inIndex, unsigned short inUnit, unsigned short* outUnits) noexcept {
    std::uint16_t const delta = inIndex.DeltaOf<Form>(inUnit);
    if (delta != CaseIndex::kSeeMapping) {
        *outUnits = static_cast<unsigned short>(inUnit + delta);
        return outUnits + 1;
    }
    Mapping const* const mapping = inIndex.Find(Form, inUnit);
    for (std::uint8_t k = 0; k < mapping->mCount; ++k) {
        outUnits[k] = mapping->mUnits[k];
    }
    return outUnits + mapping->mCount;
}

// Maps the units from ioIn to inEnd into ioOut, which ends at inOutEnd, and
// advances both.  Stops early only where the output may not have room for the
// next unit's form.  Blocks of ASCII, of Latin-1 and of units without keys go
// a block at a time; other units by their deltas.
template <CaseForm Form>
void MapUnits(CaseIndex const& inIndex, unsigned short const*& ioIn, unsigned short const* inEnd,
              unsigned short*& ioOut, unsigned short* inOutEnd) noexcept {
    constexpr std::size_t kBlock = ascii::kCaseBlock;
    unsigned short const* in = ioIn;
    unsigned short* out = ioOut;
    ascii::Latin1CaseRule const* const latin1 = inIndex.Latin1Rule<Form>();
    while (in != inEnd) {
        std::size_t const left = static_cast<std::size_t>(inEnd - in);
        std::size_t const room = static_cast<std::size_t>(inOutEnd - out);
        if (left >= kBlock && room >= kBlock &&
            (ascii::MapCaseBlock(in, out, AsciiShift<Form>::kFirst, AsciiShift<Form>::kLast,
                                 AsciiShift<Form>::kDelta) ||
             (latin1 != nullptr && ascii::MapLatin1Block(in, out, *latin1)) ||
             ascii::CopyBlockInRange(in, out, inIndex.KeylessFirst(), inIndex.KeylessLast()))) {
            in += kBlock;
            out += kBlock;
            continue;
        }
        // One block (or what is left) unit by unit, with room for the longest
        // forms checked once for all of them; near the end of the room, one
        // unit at a time.
        std::size_t const count = left < kBlock ? left : kBlock;
        std::size_t const step = room >= 3 * count ? count : (room >= 3 ? 1 : 0);
        if (step == 0) {
            break;
        }
        for (unsigned short const* const stop = in + step; in != stop; ++in) {
            out = MapOne<Form>(inIndex, *in, out);
        }
    }
    ioIn = in;
    ioOut = out;
}

// Text of up to this many units is mapped into a scratch array on the stack
// (6 KiB) with room for the longest result (three units a unit) and copied
// into a result of the right size: no zero fill and no growth.
constexpr std::size_t kStackScratchUnits = 1024;

template <CaseForm Form>
UTF16String MapCase(UTF16String const& inText) {
    CaseIndex const& index = Index();
    unsigned short const* in = inText.data();
    unsigned short const* const end = in + inText.size();
    if (inText.size() <= kStackScratchUnits) {
        unsigned short scratch[3 * kStackScratchUnits];
        unsigned short* out = scratch;
        MapUnits<Form>(index, in, end, out, scratch + 3 * kStackScratchUnits);
        return UTF16String(scratch, out);
    }
    // Most units map to one unit: start at the input's size (and the room that
    // MapUnits wants for one more form) and grow only when forms of two or
    // three units need more.
    UTF16String result(inText.size() + 2, 0);
    std::size_t written = 0;
    for (;;) {
        unsigned short* const begin = &result[0];
        unsigned short* out = begin + written;
        MapUnits<Form>(index, in, end, out, begin + result.size());
        written = static_cast<std::size_t>(out - begin);
        if (in == end) {
            break;
        }
        result.resize(result.size() + static_cast<std::size_t>(end - in) + 3);
    }
    result.resize(written);
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
