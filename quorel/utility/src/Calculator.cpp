#include <quorel/utility/Calculator.h>
#include <quorel/utility/NumberText.h>

#include "ExpressionText.h"
#include "NumberPunctuation.h"

#include <cmath>
#include <string>
#include <vector>

namespace quorel {
namespace utility {

namespace {

using calculator::ExpressionText;
using calculator::Operator;
using calculator::Span;
using calculator::Step;

bool IsExpressionUnit(unsigned short inUnit) {
    switch (inUnit) {
        case '(':
        case ')':
        case '+':
        case '-':
        case '*':
        case '/':
        case '.':
        case ',':
        case '^':
        case 'e':
        case 'E':
            return true;
        default:
            return inUnit >= '0' && inUnit <= '9';
    }
}

// The text in canonical punctuation, with every unit deleted that has no
// meaning in an expression.
std::string ExpressionUnits(UTF16String inText) {
    ToCanonicalPunctuation(inText);
    std::string units;
    units.reserve(inText.size());
    for (unsigned short unit : inText) {
        if (IsExpressionUnit(unit)) {
            units.push_back(static_cast<char>(unit));
        }
    }
    return units;
}

double Apply(Operator inOperator, double inLeft, double inRight) {
    switch (inOperator) {
        case Operator::kScale:
            return inLeft * std::pow(10.0, inRight);
        case Operator::kAdd:
            return inLeft + inRight;
        case Operator::kSubtract:
            return inLeft - inRight;
        case Operator::kMultiply:
            return inLeft * inRight;
        case Operator::kDivide:
            return inRight == 0.0 ? inLeft : inLeft / inRight;
        case Operator::kPower:
            return std::pow(inLeft, inRight);
    }
    return 0.0;
}

// An operator whose operands are being evaluated.
struct PendingOperator {
    Operator mOperator;
    Span mRight;
    double mLeft;
    bool mHasLeft;
};

// Walks the operands depth first with an explicit stack, so that the depth of
// an expression is limited by memory, not by the thread's stack.
double Evaluate(ExpressionText& ioText) {
    std::vector<PendingOperator> pending;
    Span operand = ioText.Whole();
    for (;;) {
        Step const step = ioText.Analyze(operand);
        if (!step.mIsNumber) {
            pending.push_back({step.mOperator, step.mRight, 0.0, false});
            operand = step.mLeft;
            continue;
        }
        double value = StringToNumber(ioText.LiveText(step.mLeft));
        while (!pending.empty() && pending.back().mHasLeft) {
            value = Apply(pending.back().mOperator, pending.back().mLeft, value);
            pending.pop_back();
        }
        if (pending.empty()) {
            return value;
        }
        pending.back().mLeft = value;
        pending.back().mHasLeft = true;
        operand = pending.back().mRight;
    }
}

}  // namespace

double Calculate(UTF16String inText) {
    ExpressionText text(ExpressionUnits(std::move(inText)));
    return Evaluate(text);
}

}  // namespace utility
}  // namespace quorel
