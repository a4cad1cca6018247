// Stands before the C library of Windows, whose mathematics differ from one version to the next and from other
// platforms': the unit's calls end here.

#include "kernels/elementary/elementary_functions.h"

extern "C" {
double atan(double x) { return elementary::atan(x); }
double exp(double x) { return elementary::exp(x); }
double log(double x) { return elementary::log(x); }
double pow(double x, double y) { return elementary::pow(x, y); }
double tanh(double x) { return elementary::tanh(x); }
}
