#pragma once

/// Laws of the electric air compressor, a displacement machine: MoistAirVolumetricCompressor_v1 and Power_calculation.

#include "model/moist_gas.h"

/// Share of the free speed that the drive runs at: what the command asks for, at most 1.
/// @param command     lagged speed command [rpm]
/// @param free_speed  speed that the drive reaches at its voltage [rpm]
double compressor_duty(double command, double free_speed);

/// Speed that the drive reaches at the voltage U [V], once settled [rpm].
double compressor_free_speed(double U);

/// Speed of the compressor [rpm]; the free speed passes rad/s and back with rounded factors.
double compressor_speed(double duty, double free_speed);

/// Air flow [kg/s] at a speed [rpm]: displacement times inlet density, never reversed. Independent of the outlet as
/// long as the shape coefficients of the volumetric efficiency are 0.
double compressor_mass_flow(const MoistGasState& inlet, double P_outlet, double speed);

/// The flow into the volume behind the compressor: inlet air with 0.9 of the isentropic rise of temperature.
/// @param inlet, outlet  with Cp [J/(kg K)]; mean values of both decide the rise
/// @param Cv_inlet, Cv_outlet  J/(kg K)
/// @param w  kg/s
MoistGasFlow compressor_outflow(const MoistGas& inlet, const MoistGas& outlet, double Cv_inlet, double Cv_outlet,
                                double w);

/// Temperature [K] at which the outlet's oxygen and nitrogen enthalpies are taken: the outlet temperature in degrees
/// Celsius times the pressure ratio, a law of this model alone.
double compressor_enthalpy_temperature(const MoistGasState& inlet, const MoistGasState& outlet);

/// Shaft power [W] of the drive, from the enthalpies at both sides; never negative. It does not balance with the heat
/// that the gas takes up.
/// @param h_inlet  specific enthalpy of the inlet air [J/kg]
/// @param h1, h2   specific enthalpies of the outlet's slots at compressor_enthalpy_temperature [J/kg]
double compressor_power(const MoistGasState& outlet, double h_inlet, double h1, double h2, double w);

/// Current [A] of the drive at the voltage U [V]; 0 at 0 V.
double compressor_current(double U, double power);
