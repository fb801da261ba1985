// File name comparison that ignores case, character width and kana type.
//
// Each name is brought to one form: half- and full-width variants to their
// usual width (ASCII for the full-width Latin block, full-width for katakana
// and the half-width Hangul to compatibility jamo), hiragana to katakana, a
// kana followed by a combining (semi-)voiced mark to its precomposed form, and
// the result case-folded.  The forms are then compared unit by unit.
#include <quorel/filesupport/FileNameCompare.h>
#include <quorel/utility/CaseMapping.h>

namespace quorel {
namespace filesupport {

namespace {

constexpr unsigned short kVoicedMark = 0x3099;
constexpr unsigned short kSemiVoicedMark = 0x309A;

// Half-width katakana and punctuation U+FF61 to U+FF9F, in full width.
constexpr unsigned short kHalfwidthKatakana[] = {
    0x3002, 0x300C, 0x300D, 0x3001, 0x30FB, 0x30F2, 0x30A1, 0x30A3, 0x30A5, 0x30A7, 0x30A9, 0x30E3, 0x30E5,
    0x30E7, 0x30C3, 0x30FC, 0x30A2, 0x30A4, 0x30A6, 0x30A8, 0x30AA, 0x30AB, 0x30AD, 0x30AF, 0x30B1, 0x30B3,
    0x30B5, 0x30B7, 0x30B9, 0x30BB, 0x30BD, 0x30BF, 0x30C1, 0x30C4, 0x30C6, 0x30C8, 0x30CA, 0x30CB, 0x30CC,
    0x30CD, 0x30CE, 0x30CF, 0x30D2, 0x30D5, 0x30D8, 0x30DB, 0x30DE, 0x30DF, 0x30E0, 0x30E1, 0x30E2, 0x30E4,
    0x30E6, 0x30E8, 0x30E9, 0x30EA, 0x30EB, 0x30EC, 0x30ED, 0x30EF, 0x30F3, kVoicedMark, kSemiVoicedMark};

// U+FFE0 to U+FFEE; 0 where the block has no character.
constexpr unsigned short kFullwidthSigns[] = {0x00A2, 0x00A3, 0x00AC, 0x00AF, 0x00A6, 0x00A5, 0x20A9, 0,
                                              0x2502, 0x2190, 0x2191, 0x2192, 0x2193, 0x25A0, 0x25CB};

// Half-width Hangul U+FFA0 to U+FFDC as compatibility jamo; 0 for the gaps.
unsigned short HalfwidthHangul(unsigned short inUnit) {
    struct Range {
        unsigned short mFirst, mLast, mTarget;
    };
    static constexpr Range kRanges[] = {{0xFFA0, 0xFFA0, 0x3164}, {0xFFA1, 0xFFBE, 0x3131}, {0xFFC2, 0xFFC7, 0x314F},
                                        {0xFFCA, 0xFFCF, 0x3155}, {0xFFD2, 0xFFD7, 0x315B}, {0xFFDA, 0xFFDC, 0x3161}};
    for (Range const& range : kRanges) {
        if (inUnit >= range.mFirst && inUnit <= range.mLast) {
            return static_cast<unsigned short>(range.mTarget + (inUnit - range.mFirst));
        }
    }
    return inUnit;
}

unsigned short FoldWidth(unsigned short inUnit) {
    if (inUnit >= 0xFF01 && inUnit <= 0xFF5E) {
        return static_cast<unsigned short>(inUnit - 0xFF01 + 0x21);
    }
    if (inUnit == 0x3000) {
        return 0x20;
    }
    if (inUnit == 0xFF5F || inUnit == 0xFF60) {
        return static_cast<unsigned short>(inUnit - 0xFF5F + 0x2985);
    }
    if (inUnit >= 0xFF61 && inUnit <= 0xFF9F) {
        return kHalfwidthKatakana[inUnit - 0xFF61];
    }
    if (inUnit >= 0xFFA0 && inUnit <= 0xFFDC) {
        return HalfwidthHangul(inUnit);
    }
    if (inUnit >= 0xFFE0 && inUnit <= 0xFFEE && kFullwidthSigns[inUnit - 0xFFE0] != 0) {
        return kFullwidthSigns[inUnit - 0xFFE0];
    }
    return inUnit;
}

unsigned short FoldKana(unsigned short inUnit) {
    if ((inUnit >= 0x3041 && inUnit <= 0x3096) || inUnit == 0x309D || inUnit == 0x309E) {
        return static_cast<unsigned short>(inUnit + 0x60);
    }
    return inUnit;
}

// The katakana that take the voiced mark as the next code point.
bool VoicesToNext(unsigned short inUnit) {
    return (inUnit >= 0x30AB && inUnit <= 0x30C2 && (inUnit - 0x30AB) % 2 == 0) ||  // KA..TI
           inUnit == 0x30C4 || inUnit == 0x30C6 || inUnit == 0x30C8 ||               // TU TE TO
           (inUnit >= 0x30CF && inUnit <= 0x30DB && (inUnit - 0x30CF) % 3 == 0) ||  // HA..HO
           inUnit == 0x30FD;                                                         // iteration mark
}

// A katakana and a following combining mark as one precomposed unit, or 0.
unsigned short Compose(unsigned short inBase, unsigned short inMark) {
    if (inMark == kVoicedMark) {
        if (VoicesToNext(inBase)) {
            return static_cast<unsigned short>(inBase + 1);
        }
        switch (inBase) {
            case 0x30A6: return 0x30F4;  // VU
            case 0x30EF: return 0x30F7;  // VA
            case 0x30F0: return 0x30F8;  // VI
            case 0x30F1: return 0x30F9;  // VE
            case 0x30F2: return 0x30FA;  // VO
            default: return 0;
        }
    }
    if (inMark == kSemiVoicedMark && inBase >= 0x30CF && inBase <= 0x30DB && (inBase - 0x30CF) % 3 == 0) {
        return static_cast<unsigned short>(inBase + 2);  // PA..PO
    }
    return 0;
}

UTF16String ComparisonForm(UTF16String const& inName) {
    UTF16String form;
    form.reserve(inName.size());
    for (unsigned short unit : inName) {
        unit = FoldKana(FoldWidth(unit));
        unsigned short const composed = form.empty() ? 0 : Compose(form.back(), unit);
        if (composed != 0) {
            form.back() = composed;
        } else {
            form.push_back(unit);
        }
    }
    return utility::FoldCase(form);
}

}  // namespace

int CompareFileNames(UTF16String const& inA, UTF16String const& inB) {
    int const order = ComparisonForm(inA).compare(ComparisonForm(inB));
    return order < 0 ? -1 : (order > 0 ? 1 : 0);
}

}  // namespace filesupport
}  // namespace quorel
