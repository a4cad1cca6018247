#pragma once

/// Non-finite constants with fixed bits, tests that hold in any floating point mode, and a power function that is
/// safe for non-finite and negative arguments.

extern double rtInf, rtMinusInf, rtNaN;    ///< bits 0x7FF0000000000000, 0xFFF0000000000000, 0xFFF8000000000000
extern float rtInfF, rtMinusInfF, rtNaNF;  ///< bits 0x7F800000, 0xFF800000, 0xFFC00000

/// Writes the constants above anew. They hold the same bits from load on.
void rt_InitInfAndNaN();

double rtGetInf();
double rtGetMinusInf();
double rtGetNaN();
float rtGetInfF();
float rtGetMinusInfF();
float rtGetNaNF();

bool rtIsInf(double value);
bool rtIsInfF(float value);
bool rtIsNaN(double value);  ///< by the bit pattern
bool rtIsNaNF(float value);

/// Prints nothing; tells whether the text is null.
bool rtPrintfNoOp(const char* text);

/// u0 to the power u1.
///
/// A not-a-number operand, or a negative u0 with a u1 that is no whole number, gives rtNaN. Exponents 0, 1, -1, 2 and
/// 0.5 take the exact short forms (so 0 to the power -1 is +Inf); everything else is the C library's power.
double rt_powd_snf(double u0, double u1);
