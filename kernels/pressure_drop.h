#pragma once

/// Flow through singular restrictions and regular pipes. SI units throughout, stateless.
///
/// Recurring arguments: P, P1, P2 pressure [Pa], dP pressure drop [Pa], A cross-section [m2], D hydraulic diameter [m],
/// L length [m], rho density [kg/m3], mu dynamic viscosity [Pa s], nu kinematic viscosity [m2/s], Re Reynolds number.
/// Nothing fails: an argument outside its range is replaced or answered by a fixed value where that is said, and else
/// gives the value or not-a-number of the formula.
namespace Vk_pdrop_lib {

/// Reynolds number |V| D / nu of the mean velocity V [m/s].
double Reynolds_number(double V, double D, double nu);

/// Flow number Lambda = sqrt(2 |dP| / rho) D / nu: a Reynolds number known from the pressure drop instead of the flow.
double Flow_number(double dP, double D, double rho, double nu);

/// Darcy friction factor of a pipe in every regime (Churchill, Chemical Engineering 84(24), 1977, 91-92).
///
///   f = 8 ((8 / Re)^12 + (a + b)^-1.5)^(1/12),  a = (2.457 ln(1 / ((7 / Re)^0.9 + 0.27 k)))^16,  b = (37530 / Re)^16
/// @param k  wall roughness over diameter
/// @return f; held at 640000 for Re <= 0.0001
double FrictionFactor_f_Re(double Re, double k);

/// Darcy friction factor of a pipe whose pressure drop is known and not its flow.
///
/// Blends in Churchill's manner the laminar law, his transition law and Colebrook's turbulent law; all three are
/// explicit in s = sqrt(D / L) Lambda, which is Re sqrt(f).
/// @param Lambda  Flow_number of the drop over L
/// @param k       wall roughness over diameter
/// @return f; held at 640000 for s <= 0.08
double FrictionFactor_f_Lambda(double Lambda, double k, double L, double D);

/// Mass flow through a singular loss |dP| = ksi rho V^beta / 2, with a flow linear in dP below Re_crit.
///
/// The lower of the two velocities counts. For beta > 1 that is the linear one below Re_crit, for beta < 1 above it.
/// @param dP       inlet less outlet pressure [Pa]; the flow takes its sign
/// @param ksi      loss coefficient [(m/s)^(2 - beta)], at least 1e-10
/// @param beta     exponent of the velocity, at least 0.1
/// @param Re_crit  where both laws meet, at least 10
/// @param Qm, Re   out: mass flow [kg/s] and Reynolds number; both 0 for A <= 0 or D <= 0
void SingPDrop_ksi_beta(double dP, double A, double D, double rho, double mu, double ksi, double beta, double Re_crit,
                        double* Qm, double* Re);

/// Mass flow of an ideal gas through a restriction by the isentropic outflow law of Saint-Venant and Wantzel (1839).
///
/// Choked at and below the critical pressure ratio (2 / (gamma + 1))^(gamma / (gamma - 1)); not choked, the velocity is
/// linear in the pressure difference up to the velocity of Re_crit, or of choked flow's Reynolds number if that is
/// less.
/// @param T        upstream temperature [K], on whichever side upstream is
/// @param Cp, Cv   heat capacities [J/kg/K], Cp > Cv
/// @param Cq       discharge coefficient
/// @param Re_crit  end of the linear law; at or below 0 there is none
/// @param Qm, Re   out: mass flow [kg/s], positive from 1 to 2, and Reynolds number; both 0 for A <= 0 or D <= 0
void SingPDrop_BSV(double P1, double P2, double A, double D, double T, double Cp, double Cv, double mu, double Cq,
                   double Re_crit, double* Qm, double* Re);

/// Diameter [m] of the round orifice that passes Q [m3/s] at dP with the discharge coefficient
/// Cq tanh(2 Lambda / lambda_crit).
///
/// Newton's method to 0.0001 Q, at most 100 steps, from the diameter at the full Cq, which is also the answer where the
/// iteration ends further off than it began.
/// @param Q, dP        taken by magnitude
/// @param Cq           discharge coefficient at a large flow number
/// @param lambda_crit  flow number at which tanh(2) = 0.96 of it is reached
/// @return the diameter; 0 for Q = 0
double D_CircOrif_RefPt_tanhCq(double Q, double dP, double rho, double nu, double Cq, double lambda_crit);

/// Flow of a pipe from its pressure drop (Darcy-Weisbach with FrictionFactor_f_Lambda, Hagen-Poiseuille where that
/// is held), the weight of the column included.
///
/// @param dP         inlet less outlet pressure [Pa]
/// @param k          wall roughness [m]
/// @param dz         outlet less inlet height [m]
/// @param eps        pressure [Pa] below which the root is smoothed (signed_sqrt_smooth); at or below 0 not at all
/// @param Qm, Re, f  out: mass flow [kg/s], Reynolds number, friction factor; 0, 0 and 640000 for A <= 0 or D <= 0
void RegPDrop_QfDP(double dP, double A, double D, double L, double k, double rho, double mu, double dz, double eps,
                   double* Qm, double* Re, double* f);

/// Pressure drop of a level pipe from its flow (Darcy-Weisbach with FrictionFactor_f_Re).
///
/// Inverts RegPDrop_QfDP but for the friction factor: the two laws differ by a few per cent outside laminar flow.
/// @param Qm         mass flow [kg/s]
/// @param k          wall roughness [m]
/// @param dP, Re, f  out: pressure drop [Pa] with the sign of Qm, Reynolds number, friction factor. A and D are not
///                   guarded, unlike in RegPDrop_QfDP.
void RegPDrop_DPfQ(double Qm, double A, double D, double L, double k, double rho, double mu, double* dP, double* Re,
                   double* f);

}  // namespace Vk_pdrop_lib
