// Throughput of quorel's text conversions and case mapping next to ICU, iconv
// (glibc) and Qt 5.
//
// Every benchmark runs on four kinds of text (ascii, latin: French and German
// with many accented letters, cjk: Chinese and Japanese, mixed: ASCII,
// Cyrillic, CJK and emoji) at four sizes of UTF-8 (64 B, 1 KiB, 64 KiB,
// 1 MiB).  The texts are generated from a fixed seed, so every run measures the
// same bytes; the UTF-16 inputs are converted from them once, before timing.
// Throughput is always counted in bytes of the UTF-8 form of the text, so all
// numbers of one text and size compare directly.
//
// Names are "<operation>/<implementation>/<text>/<size>";
// bench/compare_text.py prints the ratios of one JSON run
// (--benchmark_format=json or --benchmark_out=FILE).
//
// Fairness: quorel returns a new string of the exact size, so each peer also
// produces a fresh result per iteration.  ICU and iconv write into a buffer
// that is allocated per iteration with new[] at the worst-case bound (no zero
// fill, no preflight pass, no shrinking), which is the cheapest way to use
// them.  Qt returns its own new QString or QByteArray.
#include <quorel/utility/CaseMapping.h>
#include <quorel/utility/UnicodeConversion.h>

#include <benchmark/benchmark.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>

#include <QByteArray>
#include <QString>

#include <iconv.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

using quorel::UTF16String;
using quorel::UTF8String;

// ---------------------------------------------------------------------------
// Deterministic text

class Random {
public:
    explicit Random(std::uint64_t inSeed) : mState(inSeed) {}
    std::uint32_t Next() {
        // splitmix64: small, fast, and the same on every platform.
        std::uint64_t z = (mState += 0x9E3779B97F4A7C15ULL);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
        return static_cast<std::uint32_t>((z ^ (z >> 31)) >> 32);
    }
    std::uint32_t Below(std::uint32_t inLimit) { return Next() % inLimit; }

private:
    std::uint64_t mState;
};

void AppendCodePoint(std::string& ioText, std::uint32_t inCodePoint) {
    if (inCodePoint < 0x80) {
        ioText += static_cast<char>(inCodePoint);
    } else if (inCodePoint < 0x800) {
        ioText += static_cast<char>(0xC0 | (inCodePoint >> 6));
        ioText += static_cast<char>(0x80 | (inCodePoint & 0x3F));
    } else if (inCodePoint < 0x10000) {
        ioText += static_cast<char>(0xE0 | (inCodePoint >> 12));
        ioText += static_cast<char>(0x80 | ((inCodePoint >> 6) & 0x3F));
        ioText += static_cast<char>(0x80 | (inCodePoint & 0x3F));
    } else {
        ioText += static_cast<char>(0xF0 | (inCodePoint >> 18));
        ioText += static_cast<char>(0x80 | ((inCodePoint >> 12) & 0x3F));
        ioText += static_cast<char>(0x80 | ((inCodePoint >> 6) & 0x3F));
        ioText += static_cast<char>(0x80 | (inCodePoint & 0x3F));
    }
}

template <std::size_t N>
char const* Pick(Random& ioRandom, char const* const (&inWords)[N]) {
    return inWords[ioRandom.Below(N)];
}

// Ends a word: mostly a space, sometimes punctuation or a line break.
void AppendSeparator(std::string& ioText, Random& ioRandom) {
    std::uint32_t const roll = ioRandom.Below(20);
    ioText += roll == 0 ? ". " : roll == 1 ? ", " : roll == 2 ? "\n" : " ";
}

char const* const kEnglish[] = {"the",      "quick",  "brown",   "fox",     "jumps",    "over",   "lazy",
                                "dog",      "Project", "timeline", "render", "audio",    "Track",  "export",
                                "settings", "value",  "frame",   "clip",    "Preview",  "window", "layer",
                                "effect",   "and",    "with",    "from",    "Document", "media",  "import"};

char const* const kFrenchGerman[] = {
    "été",      "élève",   "à",        "déjà",    "où",      "très",    "français", "garçon",  "naïve",
    "Noël",     "hôtel",   "forêt",    "Straße",  "Größe",   "über",    "Mädchen",  "schön",   "Fußgänger",
    "Äpfel",    "Öffnung", "Übung",    "müssen",  "Bücher",  "Käse",    "Grüße",    "Ähnlichkeit",
    "réalité",  "mémoire", "fenêtre",  "château", "crème",   "brûlée",  "Zürich",   "Köln",    "Éloïse",
    "würde",    "für",     "können",   "später",  "größer",  "und",     "der",      "le",      "et"};

char const* const kRussian[] = {"Привет", "мир",  "текст", "данные", "файл", "проект",
                                "звук",   "Окно", "слой",  "эффект", "и",    "в"};

// Chinese ideographs, some kana and full-width punctuation, and now and then a
// line break: three bytes per character almost throughout.
void AppendCjk(std::string& ioText, Random& ioRandom) {
    std::uint32_t const roll = ioRandom.Below(100);
    if (roll < 80) {
        AppendCodePoint(ioText, 0x4E00 + ioRandom.Below(0x9FA5 - 0x4E00));
    } else if (roll < 94) {
        AppendCodePoint(ioText, 0x3041 + ioRandom.Below(0x3093 - 0x3041));
    } else if (roll < 99) {
        static std::uint32_t const kPunctuation[] = {0x3001, 0x3002, 0xFF0C, 0x300C, 0x300D};
        AppendCodePoint(ioText, kPunctuation[ioRandom.Below(5)]);
    } else {
        ioText += '\n';
    }
}

enum TextKind { kAscii, kLatin, kCjk, kMixed, kTextKindCount };
char const* const kTextNames[kTextKindCount] = {"ascii", "latin", "cjk", "mixed"};

void AppendPiece(TextKind inKind, std::string& ioText, Random& ioRandom) {
    switch (inKind) {
    case kAscii:
        ioText += Pick(ioRandom, kEnglish);
        AppendSeparator(ioText, ioRandom);
        break;
    case kLatin:
        ioText += Pick(ioRandom, kFrenchGerman);
        AppendSeparator(ioText, ioRandom);
        break;
    case kCjk:
        AppendCjk(ioText, ioRandom);
        break;
    case kMixed: {
        std::uint32_t const roll = ioRandom.Below(10);
        if (roll < 4) {
            ioText += Pick(ioRandom, kEnglish);
        } else if (roll < 7) {
            ioText += Pick(ioRandom, kRussian);
        } else if (roll < 9) {
            for (std::uint32_t n = 2 + ioRandom.Below(4); n != 0; --n) {
                AppendCodePoint(ioText, 0x4E00 + ioRandom.Below(0x9FA5 - 0x4E00));
            }
        } else {
            AppendCodePoint(ioText, 0x1F600 + ioRandom.Below(0x50));  // emoticons
        }
        ioText += ' ';
        break;
    }
    default:
        break;
    }
}

// The first inSize bytes of the text, cut at a character boundary and padded
// with spaces, so every size of a kind is a prefix of the same text.
std::string Prefix(std::string const& inText, std::size_t inSize) {
    std::size_t end = inSize;
    while (end > 0 && (static_cast<unsigned char>(inText[end]) & 0xC0) == 0x80) {
        --end;
    }
    std::string result = inText.substr(0, end);
    result.resize(inSize, ' ');
    return result;
}

std::string GenerateText(TextKind inKind, std::size_t inSize) {
    Random random(0x5155524F454CULL + inKind);
    std::string text;
    while (text.size() < inSize + 16) {
        AppendPiece(inKind, text, random);
    }
    return Prefix(text, inSize);
}

// ---------------------------------------------------------------------------
// Inputs

struct Input {
    std::string mUtf8;
    UTF8String mQuorel8;
    std::u16string mUtf16;
    UTF16String mQuorel16;
    QString mQt;
};

std::u16string IcuUtf8To16(std::string const& inText) {
    std::u16string result(inText.size() + 1, u'\0');
    std::int32_t length = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8(reinterpret_cast<UChar*>(&result[0]), static_cast<std::int32_t>(result.size()), &length,
                  inText.data(), static_cast<std::int32_t>(inText.size()), &error);
    if (U_FAILURE(error)) {
        std::fprintf(stderr, "ICU could not convert a generated text: %s\n", u_errorName(error));
        std::exit(1);
    }
    result.resize(static_cast<std::size_t>(length));
    return result;
}

Input MakeInput(TextKind inKind, std::size_t inSize) {
    Input input;
    input.mUtf8 = GenerateText(inKind, inSize);
    input.mQuorel8.assign(input.mUtf8.begin(), input.mUtf8.end());
    input.mUtf16 = IcuUtf8To16(input.mUtf8);
    input.mQuorel16.assign(input.mUtf16.begin(), input.mUtf16.end());
    input.mQt = QString::fromUtf16(input.mUtf16.data(), static_cast<int>(input.mUtf16.size()));
    return input;
}

// The numbers mean nothing if quorel does not produce what ICU produces on
// valid text: check once before timing.
void CheckConversions(Input const& inInput, char const* inName) {
    UTF16String const wide = quorel::utility::UTF8to16(inInput.mQuorel8);
    UTF8String const narrow = quorel::utility::UTF16to8(inInput.mQuorel16);
    bool const wideMatches = wide.size() == inInput.mUtf16.size() &&
                             std::memcmp(wide.data(), inInput.mUtf16.data(), wide.size() * 2) == 0;
    bool const narrowMatches = narrow.size() == inInput.mUtf8.size() &&
                               std::memcmp(narrow.data(), inInput.mUtf8.data(), narrow.size()) == 0;
    if (!wideMatches || !narrowMatches) {
        std::fprintf(stderr, "quorel's conversion of the %s text (%zu bytes) differs from ICU's\n", inName,
                     inInput.mUtf8.size());
        std::exit(1);
    }
}

// ---------------------------------------------------------------------------
// Benchmarks

void CountBytes(benchmark::State& ioState, Input const& inInput) {
    ioState.SetBytesProcessed(static_cast<std::int64_t>(ioState.iterations()) *
                              static_cast<std::int64_t>(inInput.mUtf8.size()));
}

std::int32_t Int32(std::size_t inValue) { return static_cast<std::int32_t>(inValue); }

// Opens a converter once per benchmark; each iteration resets its state.
class Iconv {
public:
    Iconv(char const* inTo, char const* inFrom) : mHandle(iconv_open(inTo, inFrom)) {
        if (mHandle == reinterpret_cast<iconv_t>(-1)) {
            std::perror("iconv_open");
            std::exit(1);
        }
    }
    ~Iconv() { iconv_close(mHandle); }
    Iconv(Iconv const&) = delete;
    Iconv& operator=(Iconv const&) = delete;

    // Converts inSize bytes into outBuffer (room for inCapacity); returns the
    // number of bytes written.
    std::size_t Convert(char const* inData, std::size_t inSize, char* outBuffer, std::size_t inCapacity) {
        iconv(mHandle, nullptr, nullptr, nullptr, nullptr);
        char* in = const_cast<char*>(inData);
        char* out = outBuffer;
        std::size_t inLeft = inSize;
        std::size_t outLeft = inCapacity;
        if (iconv(mHandle, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1)) {
            std::perror("iconv");
            std::exit(1);
        }
        return inCapacity - outLeft;
    }

private:
    iconv_t mHandle;
};

// UTF-8 to UTF-16

void Utf8To16Quorel(benchmark::State& ioState, Input const* inInput) {
    for (auto _ : ioState) {
        UTF16String result = quorel::utility::UTF8to16(inInput->mQuorel8);
        benchmark::DoNotOptimize(result.data());
    }
    CountBytes(ioState, *inInput);
}

void Utf8To16Icu(benchmark::State& ioState, Input const* inInput) {
    std::size_t const capacity = inInput->mUtf8.size() + 1;  // one unit per byte at most
    for (auto _ : ioState) {
        std::unique_ptr<UChar[]> result(new UChar[capacity]);
        std::int32_t length = 0;
        UErrorCode error = U_ZERO_ERROR;
        u_strFromUTF8(result.get(), Int32(capacity), &length, inInput->mUtf8.data(), Int32(inInput->mUtf8.size()),
                      &error);
        benchmark::DoNotOptimize(result.get());
        benchmark::DoNotOptimize(length);
    }
    CountBytes(ioState, *inInput);
}

void Utf8To16Iconv(benchmark::State& ioState, Input const* inInput) {
    Iconv converter("UTF-16LE", "UTF-8");
    std::size_t const capacity = inInput->mUtf8.size() * 2;
    for (auto _ : ioState) {
        std::unique_ptr<char[]> result(new char[capacity]);
        std::size_t length = converter.Convert(inInput->mUtf8.data(), inInput->mUtf8.size(), result.get(), capacity);
        benchmark::DoNotOptimize(result.get());
        benchmark::DoNotOptimize(length);
    }
    CountBytes(ioState, *inInput);
}

void Utf8To16Qt(benchmark::State& ioState, Input const* inInput) {
    for (auto _ : ioState) {
        QString result = QString::fromUtf8(inInput->mUtf8.data(), static_cast<int>(inInput->mUtf8.size()));
        benchmark::DoNotOptimize(result.constData());
    }
    CountBytes(ioState, *inInput);
}

// UTF-16 to UTF-8

void Utf16To8Quorel(benchmark::State& ioState, Input const* inInput) {
    for (auto _ : ioState) {
        UTF8String result = quorel::utility::UTF16to8(inInput->mQuorel16);
        benchmark::DoNotOptimize(result.data());
    }
    CountBytes(ioState, *inInput);
}

void Utf16To8Icu(benchmark::State& ioState, Input const* inInput) {
    std::size_t const capacity = inInput->mUtf16.size() * 3 + 1;  // three bytes per unit at most
    UChar const* source = reinterpret_cast<UChar const*>(inInput->mUtf16.data());
    for (auto _ : ioState) {
        std::unique_ptr<char[]> result(new char[capacity]);
        std::int32_t length = 0;
        UErrorCode error = U_ZERO_ERROR;
        u_strToUTF8(result.get(), Int32(capacity), &length, source, Int32(inInput->mUtf16.size()), &error);
        benchmark::DoNotOptimize(result.get());
        benchmark::DoNotOptimize(length);
    }
    CountBytes(ioState, *inInput);
}

void Utf16To8Iconv(benchmark::State& ioState, Input const* inInput) {
    Iconv converter("UTF-8", "UTF-16LE");
    std::size_t const capacity = inInput->mUtf16.size() * 3;
    char const* source = reinterpret_cast<char const*>(inInput->mUtf16.data());
    for (auto _ : ioState) {
        std::unique_ptr<char[]> result(new char[capacity]);
        std::size_t length = converter.Convert(source, inInput->mUtf16.size() * 2, result.get(), capacity);
        benchmark::DoNotOptimize(result.get());
        benchmark::DoNotOptimize(length);
    }
    CountBytes(ioState, *inInput);
}

void Utf16To8Qt(benchmark::State& ioState, Input const* inInput) {
    for (auto _ : ioState) {
        QByteArray result = inInput->mQt.toUtf8();
        benchmark::DoNotOptimize(result.constData());
    }
    CountBytes(ioState, *inInput);
}

// Case mapping.  Full upper-casing and folding give at most three units per
// unit, which is the bound the ICU buffers get.

void UpperQuorel(benchmark::State& ioState, Input const* inInput) {
    for (auto _ : ioState) {
        UTF16String result = quorel::utility::UpperCase(inInput->mQuorel16);
        benchmark::DoNotOptimize(result.data());
    }
    CountBytes(ioState, *inInput);
}

void UpperIcu(benchmark::State& ioState, Input const* inInput) {
    std::size_t const capacity = inInput->mUtf16.size() * 3 + 1;
    UChar const* source = reinterpret_cast<UChar const*>(inInput->mUtf16.data());
    for (auto _ : ioState) {
        std::unique_ptr<UChar[]> result(new UChar[capacity]);
        UErrorCode error = U_ZERO_ERROR;
        std::int32_t length =
            u_strToUpper(result.get(), Int32(capacity), source, Int32(inInput->mUtf16.size()), "", &error);
        benchmark::DoNotOptimize(result.get());
        benchmark::DoNotOptimize(length);
    }
    CountBytes(ioState, *inInput);
}

void UpperQt(benchmark::State& ioState, Input const* inInput) {
    for (auto _ : ioState) {
        QString result = inInput->mQt.toUpper();
        benchmark::DoNotOptimize(result.constData());
    }
    CountBytes(ioState, *inInput);
}

void FoldQuorel(benchmark::State& ioState, Input const* inInput) {
    for (auto _ : ioState) {
        UTF16String result = quorel::utility::FoldCase(inInput->mQuorel16);
        benchmark::DoNotOptimize(result.data());
    }
    CountBytes(ioState, *inInput);
}

void FoldIcu(benchmark::State& ioState, Input const* inInput) {
    std::size_t const capacity = inInput->mUtf16.size() * 3 + 1;
    UChar const* source = reinterpret_cast<UChar const*>(inInput->mUtf16.data());
    for (auto _ : ioState) {
        std::unique_ptr<UChar[]> result(new UChar[capacity]);
        UErrorCode error = U_ZERO_ERROR;
        std::int32_t length = u_strFoldCase(result.get(), Int32(capacity), source, Int32(inInput->mUtf16.size()),
                                            U_FOLD_CASE_DEFAULT, &error);
        benchmark::DoNotOptimize(result.get());
        benchmark::DoNotOptimize(length);
    }
    CountBytes(ioState, *inInput);
}

void FoldQt(benchmark::State& ioState, Input const* inInput) {
    for (auto _ : ioState) {
        QString result = inInput->mQt.toCaseFolded();
        benchmark::DoNotOptimize(result.constData());
    }
    CountBytes(ioState, *inInput);
}

using BenchFunction = void (*)(benchmark::State&, Input const*);

struct Candidate {
    char const* mImplementation;
    BenchFunction mFunction;
};

struct Operation {
    char const* mName;
    std::vector<Candidate> mCandidates;
};

std::vector<Operation> const& Operations() {
    static std::vector<Operation> const sOperations = {
        {"UTF8to16", {{"quorel", Utf8To16Quorel}, {"icu", Utf8To16Icu}, {"iconv", Utf8To16Iconv}, {"qt", Utf8To16Qt}}},
        {"UTF16to8", {{"quorel", Utf16To8Quorel}, {"icu", Utf16To8Icu}, {"iconv", Utf16To8Iconv}, {"qt", Utf16To8Qt}}},
        {"UpperCase", {{"quorel", UpperQuorel}, {"icu", UpperIcu}, {"qt", UpperQt}}},
        {"FoldCase", {{"quorel", FoldQuorel}, {"icu", FoldIcu}, {"qt", FoldQt}}},
    };
    return sOperations;
}

constexpr std::size_t kSizes[] = {64, 1024, 64 * 1024, 1024 * 1024};

}  // namespace

int main(int argc, char** argv) {
    // The inputs live to the end of the program; the benchmarks point at them.
    static std::vector<std::unique_ptr<Input>> sInputs;
    for (int kind = 0; kind < kTextKindCount; ++kind) {
        for (std::size_t size : kSizes) {
            sInputs.push_back(std::make_unique<Input>(MakeInput(static_cast<TextKind>(kind), size)));
            CheckConversions(*sInputs.back(), kTextNames[kind]);
        }
    }
    for (Operation const& operation : Operations()) {
        std::size_t inputIndex = 0;
        for (int kind = 0; kind < kTextKindCount; ++kind) {
            for (std::size_t size : kSizes) {
                Input const* input = sInputs[inputIndex++].get();
                for (Candidate const& candidate : operation.mCandidates) {
                    std::string const name = std::string(operation.mName) + "/" + candidate.mImplementation + "/" +
                                             kTextNames[kind] + "/" + std::to_string(size);
                    benchmark::RegisterBenchmark(name.c_str(), candidate.mFunction, input);
                }
            }
        }
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
