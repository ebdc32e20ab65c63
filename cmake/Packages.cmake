# The packages around the library.  Their headers are installed beside those of the build machine's
# own C library, which a cross-build must not see: there, CLI11 gets a folder of its own, and
# GoogleTest is built from its sources.

macro(brenu_find_cli11)
  if(CMAKE_CROSSCOMPILING)
    find_path(CLI11_HEADERS CLI/CLI.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    file(COPY ${CLI11_HEADERS}/CLI DESTINATION ${CMAKE_CURRENT_BINARY_DIR}/cli11)
    add_library(CLI11::CLI11 INTERFACE IMPORTED)
    set_target_properties(CLI11::CLI11 PROPERTIES
      INTERFACE_INCLUDE_DIRECTORIES ${CMAKE_CURRENT_BINARY_DIR}/cli11)
  else()
    find_package(CLI11 REQUIRED)
  endif()
endmacro()

macro(brenu_find_json)
  if(CMAKE_CROSSCOMPILING)
    find_path(JSON_HEADERS nlohmann/json.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    file(COPY ${JSON_HEADERS}/nlohmann DESTINATION ${CMAKE_CURRENT_BINARY_DIR}/json)
    add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
    set_target_properties(nlohmann_json::nlohmann_json PROPERTIES
      INTERFACE_INCLUDE_DIRECTORIES ${CMAKE_CURRENT_BINARY_DIR}/json)
  else()
    find_package(nlohmann_json REQUIRED)
  endif()
endmacro()

macro(brenu_find_gtest)
  if(CMAKE_CROSSCOMPILING)
    find_path(GTEST_SOURCES googlemock/CMakeLists.txt PATHS /usr/src/googletest
      NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    add_subdirectory(${GTEST_SOURCES} ${CMAKE_CURRENT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  else()
    find_package(GTest REQUIRED)
  endif()
endmacro()

# pugixml, the reader of XML.  No cross-built one comes with the distribution: there its source
# package is compiled, see need_source in scripts/common.sh.  Without either the field books in XML
# are refused with a sentence.
macro(brenu_find_pugixml)
  set(BRENU_PUGIXML_SOURCE "" CACHE PATH "Source tree of pugixml, where it is not installed")
  if(BRENU_PUGIXML_SOURCE)
    add_library(brenu_pugixml STATIC ${BRENU_PUGIXML_SOURCE}/src/pugixml.cpp)
    target_include_directories(brenu_pugixml SYSTEM PUBLIC ${BRENU_PUGIXML_SOURCE}/src)
    set_target_properties(brenu_pugixml PROPERTIES
      POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden)
    set(BRENU_PUGIXML brenu_pugixml)
  elseif(NOT CMAKE_CROSSCOMPILING)
    find_package(pugixml QUIET)
    if(TARGET pugixml::static) # so that the library needs nothing beside it
      set(BRENU_PUGIXML pugixml::static)
    elseif(TARGET pugixml::pugixml)
      set(BRENU_PUGIXML pugixml::pugixml)
    endif()
  endif()
  if(NOT BRENU_PUGIXML)
    message(STATUS "pugixml is missing: field books in XML will not be read")
  endif()
endmacro()
