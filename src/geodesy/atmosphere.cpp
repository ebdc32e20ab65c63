#include "geodesy/atmosphere.h"

#include <cmath>

#include "geodesy/numbers.h"

namespace brenu {

namespace {

// The dispersion formula of Barrell and Sears in units of 1e-7:
// 2876.04 + 48.8664 / lambda^2 + 0.68 / lambda^4
double Dispersion(double wavelength) {
  const double lambda2 = Square(wavelength);
  return 0.68 / Square(lambda2) + (48.8664 / lambda2 + 2876.04);
}

// n = 1 + (nG - 1) / (1 + t / 273.16) * p / 760 - 5.5e-8 e / (1 + t / 273.16), p in torr
double RefractiveIndex(double groupIndex, double pressure, double temperature,
                       double vapourPressure) {
  constexpr double kHectopascalPerTorr = 1.333222;
  const double k = 1.0 + (1.0 / 273.16) * temperature;
  return pressure / kHectopascalPerTorr * ((groupIndex - 1.0) / k) / 760.0 + 1.0 -
         vapourPressure * 5.5e-8 / k;
}

// `rangeTemperature` decides on the cold range.
double VapourPressure(const PsychrometerReading& air, double rangeTemperature, double wavelength) {
  if (-10.0 < air.dry && air.dry < 50.0) {
    // Saturation at the wet bulb (Magnus), less the psychrometer term (Sprung).
    return 6.107 * std::pow(10.0, 7.5 * air.wet / (air.wet + 237.3)) -
           (air.dry - air.wet) * 0.000662 * (1.0 + 0.001146 * air.wet) * air.pressure;
  }
  if (-15.0 < rangeTemperature && rangeTemperature < 10.0) {
    return 0.00068 * Square(air.dry) + 0.11177 * air.dry + 0.21981 + 0.00294 * air.pressure;
  }
  return wavelength;
}

// Absolute humidity to vapour pressure in torr: e = a T / 289.
double VapourPressure(const HygrometerReading& air) {
  return (air.temperature + 273.15) * air.humidity / 289.0;
}

}  // namespace

double PsychrometricCorrection(const PsychrometerReading& end1, const PsychrometerReading& end2,
                               double wavelength, double distance) {
  const double groupIndex = Dispersion(wavelength) * 1e10 + 1.0 - 7.0;
  const double rangeTemperature = end1.dry;
  const double q1 = RefractiveIndex(groupIndex, end1.pressure, end1.dry,
                                    VapourPressure(end1, rangeTemperature, wavelength));
  const double q2 = RefractiveIndex(groupIndex, end2.pressure, end2.dry,
                                    VapourPressure(end2, rangeTemperature, wavelength));
  return (q2 - q1) * distance;
}

double HygrometricCorrection(const HygrometerReading& end1, const HygrometerReading& end2,
                             double wavelength, double distance) {
  const double groupIndex = Dispersion(wavelength) * 1e-7 + 1.0;
  const double n1 =
      RefractiveIndex(groupIndex, end1.pressure, end1.temperature, VapourPressure(end1));
  const double n2 =
      RefractiveIndex(groupIndex, end2.pressure, end2.temperature, VapourPressure(end2));
  return (n2 - n1) * distance;
}

}  // namespace brenu
