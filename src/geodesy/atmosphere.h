// Electronic distances corrected for the refraction of the air.  Pressures in hPa, temperatures in
// degrees Celsius, wavelengths in micrometres, distances in metres.
#pragma once

namespace brenu {

struct PsychrometerReading {
  double pressure;
  double dry;
  double wet;
};

struct HygrometerReading {
  double pressure;
  double temperature;
  double humidity;  // absolute, grams of water vapour a cubic metre
};

// (Q2 - Q1) S, with Q formed like an index of refraction but from a dispersion factor times 1e10
// where the index has 1e-7, less 7.  The vapour pressure follows from the psychrometer between -10
// and 50 degrees, from the dry temperature alone in a cold range, and is elsewhere taken to be the
// number of the wavelength; the cold range is judged by the temperature of the first end for both.
double PsychrometricCorrection(const PsychrometerReading& end1, const PsychrometerReading& end2,
                               double wavelength, double distance);

// (n2 - n1) S, with the index of refraction n of each end.
double HygrometricCorrection(const HygrometerReading& end1, const HygrometerReading& end2,
                             double wavelength, double distance);

}  // namespace brenu
