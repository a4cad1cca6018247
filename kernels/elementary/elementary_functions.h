#pragma once

/// Elementary functions of the same results on every machine, whatever its C library. Special values are those of annex
/// F of the C standard; errno and the floating point exceptions are left alone.
///
/// Arguments are reduced by tables as in P. T. P. Tang, "Table-driven implementation of the exponential function in
/// IEEE floating-point arithmetic" (ACM TOMS 15, 1989) and "... of the logarithm function ..." (ACM TOMS 16, 1990);
/// what would be lost in rounding is carried along as a second double (T. J. Dekker, "A floating-point technique for
/// extending the available precision", Numerische Mathematik 18, 1971).
namespace elementary {

/// Correctly rounded but for one case in a thousand: errors up to 0.503 units in the last place.
double exp(double x);
double log(double x);
double atan(double x);
double pow(double x, double y);

/// By way of exp(2 |x|) - 1, as C libraries commonly do: errors up to 2.5 units in the last place.
double tanh(double x);

}  // namespace elementary
