#pragma once

/// Heat exchangers by the effectiveness-NTU method (W. M. Kays, A. L. London, Compact Heat Exchangers). Stateless.
///
/// The heat flow is Q = effectiveness Cmin (T1 - T2) with the capacity flows C = |q cp|, Cr = Cmin / Cmax in 0 .. 1 and
/// NTU = UA / Cmin >= 0. Every correlation answers the effectiveness, 0 .. 1, and tends to 1 - e^-NTU as Cr goes to 0.
/// Those that divide by Cr hold it at 2.2e-16 or more, where rounding leaves them no correct digit: use them above
/// Cr = 1e-8. Nothing fails.
namespace Vk_hexch_lib {

/// Heat flow between two fluids.
///
/// @param q1, q2          mass flows [kg/s]; only flow type 1 reads their signs
/// @param cp1, cp2        heat capacities [J/kg/K]
/// @param T1, T2          inlet temperatures [K]
/// @param UA              conductance [W/K], of each shell where there are several; for flow type 4 the effectiveness,
///                        clamped to 0 .. 1
/// @param Q               out: heat flow from fluid 1 to fluid 2 [W]
/// @param Qmax            out: heat flow at effectiveness 1 [W]
/// @param Q1max, Q2max    out: heat flow that would bring fluid 1, fluid 2 to the other's inlet temperature [W]
/// @param NTU             out: number of transfer units; 0 for flow type 4
/// @param effectiveness   out: 0 for an unknown flow type
/// @param flowType        1 parallel flow, or counterflow where the signs of q1 and q2 differ (0 has both signs);
///                        2 shell and tube; 3 crossflow; 4 given effectiveness; 5 NTUconst; 6 NTUparallel;
///                        7 NTUcounterflow; 8 NTUoneshell; 9 NTUnshell, also for one shell; 10 NTUunmixed;
///                        11 NTUcmaxmixed; 12 NTUcmaxunmixed; 13 NTUmixed
/// @param nShells         shells in series, for types 2 and 9
/// @param mix1, mix2      1 unmixed, 2 mixed, for type 3
void phiNTU(double q1, double cp1, double T1, double q2, double cp2, double T2, double UA, double* Q, double* Qmax,
            double* Q1max, double* Q2max, double* NTU, double* effectiveness, int flowType, int nShells, int mix1,
            int mix2);

/// Parallel flow: (1 - e^(-NTU (1 + Cr))) / (1 + Cr).
double NTUparallel(double Cr, double NTU);

/// Counterflow: (1 - x) / (1 - x Cr) with x = e^(-NTU (1 - Cr)).
///
/// Deliberately 1 at Cr = 1 exactly, where the formula tends to NTU / (1 + NTU).
double NTUcounterflow(double Cr, double NTU);

/// One shell pass, two or a multiple of two tube passes: 2 / (1 + Cr + s (1 + x) / (1 - x)) with s = sqrt(1 + Cr^2)
/// and x = e^(-NTU s).
double NTUoneshell(double Cr, double NTU);

/// n shells in series, in counterflow to each other: (a^n - 1) / (a^n - Cr) with a = (1 - e1 Cr) / (1 - e1), and the
/// limit of it at Cr = 1. Not-a-number where a^n overflows, as at e1 = 1 with Cr < 1.
/// @param NTU  not read: e1 has it
/// @param e1   effectiveness of one shell
double NTUnshell(double Cr, double NTU, int n, double e1);

/// Crossflow, both fluids unmixed: 1 - e^(NTU^0.22 (e^(-Cr NTU^0.78) - 1) / Cr).
///
/// A fit to the exact series: within 2.2 % of it for NTU from 1 to 10, up to 4 % too low below.
double NTUunmixed(double Cr, double NTU);

/// Crossflow, both fluids mixed: NTU / (Cr NTU / (1 - e^(-Cr NTU)) + NTU / (1 - e^-NTU) - 1), with NTU held at 2.2e-16
/// or more.
double NTUmixed(double Cr, double NTU);

/// Crossflow, only the fluid of the larger capacity flow mixed: (1 - e^(-Cr (1 - e^-NTU))) / Cr.
double NTUcmaxmixed(double Cr, double NTU);

/// Crossflow, only the fluid of the smaller capacity flow mixed: 1 - e^(-(1 - e^(-Cr NTU)) / Cr).
double NTUcmaxunmixed(double Cr, double NTU);

/// One fluid at constant temperature: 1 - e^-NTU.
double NTUconst(double NTU);

}  // namespace Vk_hexch_lib
