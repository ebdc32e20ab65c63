# What `cmake --install` puts where: the libraries with their headers, a CMake package, pkg-config
# files, the program and its man page, the documentation.
set(CMAKE_INSTALL_DOCDIR share/doc/brenu CACHE PATH "Folder of the documentation")
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

install(TARGETS brenu brenu-survey EXPORT BrenuTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/brenu DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
if(WIN32) # for linkers that make import libraries of their own
  install(FILES ${PROJECT_BINARY_DIR}/src/brenu.def ${PROJECT_BINARY_DIR}/src/brenu-survey.def
    DESTINATION ${CMAKE_INSTALL_LIBDIR})
  configure_file(cmake/windows-readme.txt.in README.txt @ONLY NEWLINE_STYLE CRLF)
  install(FILES ${PROJECT_BINARY_DIR}/README.txt DESTINATION .)
endif()

set(BRENU_PAGE "" CACHE FILEPATH "The page brenu.html, as scripts/web makes it, to be installed")
if(BRENU_PAGE AND WIN32)
  install(FILES ${BRENU_PAGE} DESTINATION .)
elseif(BRENU_PAGE)
  install(FILES ${BRENU_PAGE} DESTINATION ${CMAKE_INSTALL_DATADIR}/brenu)
endif()

set(package ${CMAKE_INSTALL_LIBDIR}/cmake/Brenu)
install(EXPORT BrenuTargets NAMESPACE Brenu:: FILE BrenuConfig.cmake DESTINATION ${package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/BrenuConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/BrenuConfigVersion.cmake DESTINATION ${package})

# The pkg-config files find their folders from their own place, so that the prefix can be moved.
file(RELATIVE_PATH up_to_prefix
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
foreach(library brenu brenu-survey)
  configure_file(cmake/library.pc.in ${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${library}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

if(BRENU_BUILD_TOOL)
  install(TARGETS brenu_tool DESTINATION ${CMAKE_INSTALL_BINDIR})
  if(NOT WIN32)
    install(FILES docs/brenu.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  endif()
endif()
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} FILES_MATCHING PATTERN *.md)
install(DIRECTORY examples bindings python DESTINATION ${CMAKE_INSTALL_DOCDIR}
  PATTERN CMakeLists.txt EXCLUDE
  PATTERN generate.py EXCLUDE
  PATTERN tests EXCLUDE
  PATTERN build EXCLUDE
  PATTERN *.egg-info EXCLUDE
  PATTERN __pycache__ EXCLUDE)
