#include "import_options.h"

namespace brenu {

namespace {

using Object = nlohmann::ordered_json;

// What is absent stays as it is; whether it is there.
template <typename Value>
bool Take(const Object& given, const char* key, Value& value) {
  const auto found = given.find(key);
  if (found == given.end()) return false;
  value = found->get<Value>();
  return true;
}

}  // namespace

ImportOptions ImportOptionsOf(const Object& given) {
  ImportOptions options;
  Take(given, "stationCodes", options.reading.stationCodes);
  ReductionOptions& steps = options.reduction;
  Take(given, "averageFaces", steps.averageFaces);
  Take(given, "averageSets", steps.averageSets);
  Take(given, "joinSetups", steps.joinSetups);
  Take(given, "centre", steps.centre);
  Take(given, "trigonometricHeights", steps.trigonometricHeights);
  if (double k = 0.0; Take(given, "refraction", k)) steps.refraction = k;
  Take(given, "constant", steps.constant);
  Take(given, "scale", steps.scale);
  AirCorrection air;
  int count = 0;
  count += Take(given, "pressure", air.air.pressure) ? 1 : 0;
  count += Take(given, "temperature", air.air.temperature) ? 1 : 0;
  count += Take(given, "humidity", air.air.humidity) ? 1 : 0;
  count += Take(given, "wavelength", air.wavelength) ? 1 : 0;
  count += Take(given, "assumedPressure", air.assumed.pressure) ? 1 : 0;
  count += Take(given, "assumedTemperature", air.assumed.temperature) ? 1 : 0;
  count += Take(given, "assumedHumidity", air.assumed.humidity) ? 1 : 0;
  if (count > 0) steps.air = air;
  if (double height = 0.0; Take(given, "ellipsoid", height)) steps.ellipsoid = {height};
  PlaneReduction plane;
  const bool hasScale = Take(given, "projectionScale", plane.scale);
  if (Take(given, "projectionEasting", plane.easting) || hasScale) steps.plane = plane;
  return options;
}

}  // namespace brenu
