#include <quorel/utility/CaseMapping.h>
#include <quorel/utility/TextUtils.h>

namespace quorel {
namespace utility {

namespace {

constexpr unsigned short kCR = 0x000D;
constexpr unsigned short kLF = 0x000A;
constexpr unsigned short kAt = '@';

// A line ending found in a text: where it starts and how many units it has.
struct LineEnding {
    std::size_t mPosition;
    std::size_t mLength;
};

// Finds the next line ending at or after inFrom; a length of 0 means none.
// CR LF is one ending; a lone CR or LF is one; LF CR are two.
LineEnding FindLineEnding(UTF16String const& inText, std::size_t inFrom) {
    std::size_t const size = inText.size();
    for (std::size_t i = inFrom; i < size; ++i) {
        if (inText[i] == kCR) {
            return {i, (i + 1 < size && inText[i + 1] == kLF) ? 2u : 1u};
        }
        if (inText[i] == kLF) {
            return {i, 1};
        }
    }
    return {size, 0};
}

}  // namespace

UTF16String GetLineEnding(LineEndingType inType) {
    static unsigned short const kCRLF[] = {kCR, kLF};
    switch (inType) {
        case kLineEnding_CRLF:
            return UTF16String(kCRLF, 2);
        case kLineEnding_CR:
            return UTF16String(1, kCR);
        case kLineEnding_LF:
            return UTF16String(1, kLF);
    }
    return UTF16String();
}

void ConvertLineEndings(LineEndingType inType, UTF16String& ioText) {
    UTF16String const wanted = GetLineEnding(inType);
    UTF16String result;
    bool started = false;
    std::size_t copied = 0;  // everything before this position is settled
    for (LineEnding ending = FindLineEnding(ioText, 0); ending.mLength != 0;
         ending = FindLineEnding(ioText, ending.mPosition + ending.mLength)) {
        if (ioText.compare(ending.mPosition, ending.mLength, wanted) == 0) {
            continue;
        }
        started = true;
        result.append(ioText, copied, ending.mPosition - copied);
        result.append(wanted);
        copied = ending.mPosition + ending.mLength;
    }
    if (!started) {
        return;
    }
    result.append(ioText, copied, UTF16String::npos);
    if (!result.empty()) {
        ioText.swap(result);
    }
}

UTF16String ReplaceInString(UTF16String const& inTemplate, UTF16String const& in0, UTF16String const& in1,
                            UTF16String const& in2, UTF16String const& in3, UTF16String const& in4,
                            UTF16String const& in5, UTF16String const& in6, UTF16String const& in7,
                            UTF16String const& in8, UTF16String const& in9) {
    UTF16String const* const replacements[10] = {&in0, &in1, &in2, &in3, &in4, &in5, &in6, &in7, &in8, &in9};
    std::size_t const size = inTemplate.size();
    UTF16String result;
    result.reserve(size);
    for (std::size_t i = 0; i < size; ++i) {
        unsigned short const unit = inTemplate[i];
        if (unit != kAt) {
            result.push_back(unit);
        } else if (i + 1 == size) {
            result.push_back(kAt);
        } else {
            unsigned short const next = inTemplate[++i];
            if (next >= '0' && next <= '9') {
                result.append(*replacements[next - '0']);
            } else if (next == kAt) {
                result.push_back(kAt);
            } else {
                result.push_back(kAt);
                result.push_back(next);
            }
        }
    }
    return result;
}

void ReplaceAllStringInString(UTF16String& ioText, UTF16String const& inSearch, UTF16String const& inReplacement) {
    if (inSearch.empty()) {
        return;
    }
    std::size_t found = ioText.find(inSearch);
    if (found == UTF16String::npos) {
        return;
    }
    UTF16String result;
    std::size_t copied = 0;
    for (; found != UTF16String::npos; found = ioText.find(inSearch, copied)) {
        result.append(ioText, copied, found - copied);
        result.append(inReplacement);
        copied = found + inSearch.size();
    }
    result.append(ioText, copied, UTF16String::npos);
    ioText.swap(result);
}

void ValidateForHex(UTF16String& ioText) {
    UTF16String const upper = UpperCase(ioText);
    UTF16String result;
    result.reserve(upper.size());
    for (unsigned short unit : upper) {
        if ((unit >= '0' && unit <= '9') || (unit >= 'A' && unit <= 'F')) {
            result.push_back(unit);
        }
    }
    ioText.swap(result);
}

}  // namespace utility
}  // namespace quorel
