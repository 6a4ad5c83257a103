// Math functions. A +0 result is given in integer form, every other result in double form; -0
// stays -0. random() draws from the C library's rand, seeded from the clock at its first use.
#include "ecmascript/private/MathObject.h"

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <iterator>

#include "ecmascript/Conversions.h"
#include "ecmascript/GlobalObject.h"
#include "ecmascript/private/Builtins.h"

namespace EcmaScriptPrivate {

using namespace EcmaScript;

namespace {

enum {
    MathAbs, MathAcos, MathAsin, MathAtan, MathAtan2, MathCeil, MathCos, MathExp, MathFloor, MathLog, MathMax,
    MathMin, MathPow, MathRandom, MathRound, MathSin, MathSqrt, MathTan
};

const struct {
    const DomChar* pName;
    int nLength;
} kFunctions[] = {{u"abs", 1},   {u"acos", 1},  {u"asin", 1}, {u"atan", 1},   {u"atan2", 2}, {u"ceil", 1},
                  {u"cos", 1},   {u"exp", 1},   {u"floor", 1}, {u"log", 1},   {u"max", 2},   {u"min", 2},
                  {u"pow", 2},   {u"random", 1}, {u"round", 1}, {u"sin", 1},  {u"sqrt", 1},  {u"tan", 1}};

CNumber Result(double value) {
    if (value == 0 && !std::signbit(value)) return CNumber::FromInteger(0);
    return CNumber::FromDouble(value);
}

bool IsOddInteger(double value) { return std::isfinite(value) && std::fmod(std::fabs(value), 2.0) == 1.0; }

double Pow(double x, double y) {
    const double infinity = HUGE_VAL;
    if (std::isnan(y)) return NAN;
    if (y == 0) return 1;
    if (std::isnan(x)) return NAN;
    if (std::isinf(y)) {
        double magnitude = std::fabs(x);
        if (magnitude == 1) return NAN;
        return (magnitude > 1) == (y > 0) ? infinity : 0.0;
    }
    if (std::isinf(x) || x == 0) {
        bool negative = std::signbit(x) && IsOddInteger(y);
        double magnitude = (std::isinf(x) == (y > 0)) ? infinity : 0.0;
        return negative ? -magnitude : magnitude;
    }
    if (x < 0 && std::floor(y) != y) return NAN;
    return std::pow(x, y);
}

double Round(double x) {
    if (std::isnan(x) || x == 0 || std::isinf(x)) return x;
    if (x > 0 && x < 0.5) return 0.0;
    if (x < 0 && x >= -0.5) return -0.0;
    return std::floor(x + 0.5);
}

double MaxOrMin(double x, double y, bool max) {
    if (std::isnan(x) || std::isnan(y)) return NAN;
    if (x == 0 && y == 0) {
        bool negative = max ? std::signbit(x) && std::signbit(y) : std::signbit(x) || std::signbit(y);
        return negative ? -0.0 : 0.0;
    }
    return max ? (x > y ? x : y) : (x < y ? x : y);
}

// rand() keeps 15 bits here: the result lies from 0 to 1 in 32768 steps.
double Random() {
    static bool seeded = false;
    if (!seeded) {
        std::srand(static_cast<unsigned>(std::time(nullptr)));
        seeded = true;
    }
    return (std::rand() & 0x7FFF) * 3.0518509475997192e-05;
}

// Function number `index` on its arguments.
CNumber MathFunction(int index, const CNumber& xNumber, const CNumber& yNumber) {
    double x = xNumber.GetDouble();
    double y = yNumber.GetDouble();
    switch (index) {
        case MathAbs: return Result(std::fabs(x));
        case MathAcos: return Result(std::acos(x));
        case MathAsin: return Result(std::asin(x));
        case MathAtan: return Result(std::atan(x));
        case MathAtan2: return Result(std::isnan(x) || std::isnan(y) ? NAN : std::atan2(x, y));
        case MathCeil: return Result(std::ceil(x));
        case MathCos: return Result(std::cos(x));
        case MathExp: return Result(std::exp(x));
        case MathFloor: return Result(std::floor(x));
        case MathLog: return Result(x < 0 ? NAN : std::log(x));
        case MathMax: return Result(MaxOrMin(x, y, true));
        case MathMin: return Result(MaxOrMin(x, y, false));
        case MathPow: return Result(Pow(x, y));
        case MathRandom: return Result(Random());
        case MathRound: return Result(Round(x));
        case MathSin: return Result(std::sin(x));
        case MathSqrt: return Result(x < 0 ? NAN : std::sqrt(x));
        default: return Result(std::tan(x));
    }
}

}  // namespace

CMathObject::CMathObject(CGlobalObject* global) : CObject(global, global->GetObjectPrototype()) {
    const uint32_t fixed = ReadOnly | DontEnum | DontDelete;
    CNumber ln10 = MathFunction(MathLog, CNumber::FromInteger(10), CNumber());
    CNumber ln2 = MathFunction(MathLog, CNumber::FromInteger(2), CNumber());
    CNumber one = CNumber::FromInteger(1);
    DefineValue(u"E", CValue::Number(CNumber::FromDouble(2.718281828459045)), fixed);
    DefineValue(u"LN10", CValue::Number(ln10), fixed);
    DefineValue(u"LN2", CValue::Number(ln2), fixed);
    DefineValue(u"LOG2E", CValue::Number(one.Divide(ln2)), fixed);
    DefineValue(u"LOG10E", CValue::Number(one.Divide(ln10)), fixed);
    DefineValue(u"PI", CValue::Number(CNumber::FromDouble(3.141592653589793)), fixed);
    DefineValue(u"SQRT1_2", CValue::Number(MathFunction(MathSqrt, CNumber::FromDouble(0.5), CNumber())), fixed);
    DefineValue(u"SQRT2", CValue::Number(MathFunction(MathSqrt, CNumber::FromInteger(2), CNumber())), fixed);
    for (int i = 0; i < static_cast<int>(std::size(kFunctions)); ++i)
        AddFunction(kFunctions[i].pName, i, kFunctions[i].nLength, DontEnum);
}

TRefPtr<CValue> CMathObject::CallNative(int index, CObject*, const CValueList& arguments) {
    CNumber x = arguments.GetSize() > 0 ? ToNumber(arguments[0]) : CNumber::NaN();
    CNumber y = arguments.GetSize() > 1 ? ToNumber(arguments[1]) : CNumber::NaN();
    return CValue::Number(MathFunction(index, x, y));
}

void InstallMath(CGlobalObject* global) {
    TRefPtr<CObject> math = new CMathObject(global);
    global->DefineValue(u"Math", CValue::Object(math), DontEnum);
}

}  // namespace EcmaScriptPrivate
