#pragma once

#include <string>

#include "job/store.h"

namespace brenu {

// A job as gama-local XML (gkf): axes north and east, angles in gon, standard errors from the
// parameters, levelling with 1 mm for 1 km.
std::string GkfText(const AdjParam& param, const Store& store);

}  // namespace brenu
