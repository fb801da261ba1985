// The calculator's rules written out literally, one recursive call per operand
// and a fresh copy of the text at each level, as a reference to compare the
// library's Calculate with on small inputs.  Far too slow for long ones.
#ifndef QUOREL_TESTS_UTILITY_CALCULATORREFERENCE_H
#define QUOREL_TESTS_UTILITY_CALCULATORREFERENCE_H

#include <quorel/utility/NumberText.h>

#include <cmath>
#include <cstring>

namespace quorel {
namespace testing {

inline bool ReferenceIsOneOf(unsigned short inUnit, char const* inSet) {
    return inUnit != 0 && inUnit < 0x80 && std::strchr(inSet, static_cast<char>(inUnit)) != nullptr;
}

inline double ReferenceCalculate(UTF16String inText) {
    // 1, 2: normalise, then keep the twelve kinds of units.
    UTF16String text;
    for (unsigned short unit : inText) {
        unit = unit == 0x3001 ? ',' : unit == 0x3002 ? '.' : (unit >= 0xFF01 && unit <= 0xFF1F) ? unit - 0xFEE0 : unit;
        if (ReferenceIsOneOf(unit, "0123456789()+-*/.,^eE")) text.push_back(unit);
    }
    // 3
    if (text.size() < 2) return utility::StringToNumber(text, 1);
    // 4: enclosing parentheses.
    UTF16String copy = text;
    while (copy.size() >= 2 && copy.front() == '(' && copy.back() == ')') copy = copy.substr(1, copy.size() - 2);
    int depth = 0;
    bool fellBelow = false;
    for (unsigned short unit : copy) {
        depth += (unit == '(') - (unit == ')');
        fellBelow = fellBelow || depth < 0;
    }
    if (!fellBelow) text = copy;
    // 5: scan.  Rows: 0 "e"/"E", 1 "+", 2 "-", 3 "*", 4 "/", 5 "^".
    long positions[6] = {-1, -1, -1, -1, -1, -1};
    UTF16String cleaned;
    depth = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned short const c = text[i];
        if (c == '(' || c == ')') {
            depth += c == '(' ? 1 : -1;
        } else if (depth == 0 && (c == '+' || c == '-')) {
            positions[c == '+' ? 1 : 2] = static_cast<long>(i);
            positions[c == '+' ? 2 : 1] = -1;
        } else if (depth == 0 && ReferenceIsOneOf(c, "*/eE^")) {
            if (i == 0 || ReferenceIsOneOf(text[i - 1], "+-*/eE^")) continue;  // dropped
            positions[(c == 'e' || c == 'E') ? 0 : c == '*' ? 3 : c == '/' ? 4 : 5] = static_cast<long>(i);
        }
        cleaned.push_back(c);
    }
    // 6 to 9
    for (int row = 0; row < 6; ++row) {
        if (positions[row] < 0) continue;
        std::size_t const p = static_cast<std::size_t>(positions[row]);
        std::size_t const n = cleaned.size();
        double const left = ReferenceCalculate(cleaned.substr(0, p < n ? p : n));
        double const right = ReferenceCalculate(cleaned.substr(p + 1 < n ? p + 1 : n));
        switch (row) {
            case 0: return left * std::pow(10.0, right);
            case 1: return left + right;
            case 2: return left - right;
            case 3: return left * right;
            case 4: return right == 0.0 ? left : left / right;
            default: return std::pow(left, right);
        }
    }
    return utility::StringToNumber(cleaned, 1);
}

}  // namespace testing
}  // namespace quorel

#endif
