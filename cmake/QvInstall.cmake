# What cmake --install puts where, and the Debian packages that cpack makes of it: a component is a package.
include(CMakePackageConfigHelpers)

set(QV_CMAKE_FOLDER ${CMAKE_INSTALL_LIBDIR}/cmake/qvGraph)
# pkg-config paths follow the prefix, unless a folder was given whole.
foreach(folder LIBDIR INCLUDEDIR)
  cmake_path(IS_ABSOLUTE CMAKE_INSTALL_${folder} whole)
  if(whole)
    set(QV_PC_${folder} ${CMAKE_INSTALL_${folder}})
  else()
    set(QV_PC_${folder} "\${prefix}/${CMAKE_INSTALL_${folder}}")
  endif()
endforeach()

# The prefix as seen from the files, so that an installed tree can be moved.
file(RELATIVE_PATH QV_PC_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
if(NOT BUILD_SHARED_LIBS)
  set(QV_PC_PRIVATE_LIBS "-ldate-tz") # it has no pkg-config file of its own
  set(QV_PC_PRIVATE "freetype2 harfbuzz fontconfig libpng cairo-pdf cairo-ft")
  set(QV_PC_PRIVATE_QT Qt6PrintSupport)
endif()

# qv_install_library(target EXPORT name PC file RUNTIME component DEVELOPMENT component)
function(qv_install_library target)
  cmake_parse_arguments(arg "" "EXPORT;PC;RUNTIME;DEVELOPMENT" "" ${ARGN})
  install(TARGETS ${target} EXPORT ${arg_EXPORT}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${arg_RUNTIME} NAMELINK_COMPONENT ${arg_DEVELOPMENT}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT ${arg_DEVELOPMENT})
  install(EXPORT ${arg_EXPORT} NAMESPACE qvGraph:: DESTINATION ${QV_CMAKE_FOLDER} COMPONENT ${arg_DEVELOPMENT})
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${arg_PC}.in ${PROJECT_BINARY_DIR}/${arg_PC} @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${arg_PC} DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT ${arg_DEVELOPMENT})
endfunction()

qv_install_library(qvgraph EXPORT qvGraphCore PC qvgraph.pc RUNTIME runtime DEVELOPMENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/qvgraph DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  COMPONENT development PATTERN QvGraphWidget.h EXCLUDE)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/qvGraphConfig.cmake.in
  ${PROJECT_BINARY_DIR}/qvGraphConfig.cmake INSTALL_DESTINATION ${QV_CMAKE_FOLDER})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/qvGraphConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/qvGraphConfig.cmake ${PROJECT_BINARY_DIR}/qvGraphConfigVersion.cmake
  DESTINATION ${QV_CMAKE_FOLDER} COMPONENT development)

if(TARGET qvgraph-qt6)
  qv_install_library(qvgraph-qt6 EXPORT qvGraphQt PC qvgraph-qt6.pc RUNTIME qt-runtime DEVELOPMENT qt-development)
  install(FILES ${PROJECT_SOURCE_DIR}/include/qvgraph/QvGraphWidget.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qvgraph COMPONENT qt-development)
endif()

# Where this Qt looks for its plugins, under our own prefix: with Qt's prefix Designer finds it by itself.
if(TARGET qvgraph_designer)
  get_target_property(QV_QMAKE Qt6::qmake IMPORTED_LOCATION)
  foreach(place PREFIX PLUGINS)
    execute_process(COMMAND ${QV_QMAKE} -query QT_INSTALL_${place} OUTPUT_VARIABLE QV_QT_${place}
      OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  endforeach()
  file(RELATIVE_PATH QV_PLUGIN_FOLDER ${QV_QT_PREFIX} ${QV_QT_PLUGINS})
  install(TARGETS qvgraph_designer LIBRARY DESTINATION ${QV_PLUGIN_FOLDER}/designer COMPONENT qt-development)
endif()

# The program, and what a desktop shows of it.
if(TARGET qvplot)
  install(TARGETS qvplot RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
  if(TARGET qvplot_desktop)
    install(TARGETS qvplot_desktop LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/qvplot COMPONENT program)
  endif()
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/qvplot.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications
    COMPONENT program)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/qvplot.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT program)
  set(completions ${PROJECT_SOURCE_DIR}/packaging/completions)
  install(FILES ${completions}/qvplot.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
    RENAME qvplot COMPONENT program)
  install(FILES ${completions}/_qvplot DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT program)
  install(FILES ${completions}/qvplot.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d
    COMPONENT program)
endif()

# qv_compressed(input output): a file as Debian wants it, compressed without a date.
find_program(GZIP gzip REQUIRED)
function(qv_compressed input output)
  execute_process(COMMAND ${GZIP} -9nc ${input} OUTPUT_FILE ${output} COMMAND_ERROR_IS_FATAL ANY)
endfunction()
qv_compressed(${PROJECT_SOURCE_DIR}/packaging/qvplot.1 ${PROJECT_BINARY_DIR}/qvplot.1.gz)
qv_compressed(${PROJECT_SOURCE_DIR}/packaging/changelog ${PROJECT_BINARY_DIR}/changelog.gz)
if(TARGET qvplot)
  install(FILES ${PROJECT_BINARY_DIR}/qvplot.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT program)
endif()

# The licence in the form of Debian's copyright files: indented, with a point on empty lines.
file(STRINGS ${PROJECT_SOURCE_DIR}/LICENSE QV_LICENSE)
list(TRANSFORM QV_LICENSE PREPEND " ")
list(TRANSFORM QV_LICENSE REPLACE "^ $" " .")
list(JOIN QV_LICENSE "\n" QV_LICENSE)
configure_file(${PROJECT_SOURCE_DIR}/packaging/copyright.in ${PROJECT_BINARY_DIR}/copyright @ONLY)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME qvgraph)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "graphing control for C++ programs")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "qvGraph developers <qvgraph@packages.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

# qv_package(component NAME package SECTION section NEEDS other packages SUMMARY line TEXT description)
macro(qv_package component)
  cmake_parse_arguments(arg "" "NAME;SECTION;SUMMARY;TEXT;NEEDS" "" ${ARGN})
  string(TOUPPER ${component} key)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${arg_NAME})
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${arg_SECTION})
  set(CPACK_COMPONENT_${key}_DESCRIPTION "${arg_SUMMARY}\n${arg_TEXT}")
  set(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS "${arg_NEEDS}")
  if(arg_SECTION STREQUAL libs)
    set(CPACK_DEBIAN_${key}_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)
  endif()
  install(FILES ${PROJECT_BINARY_DIR}/copyright ${PROJECT_BINARY_DIR}/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${arg_NAME} COMPONENT ${component})
endmacro()

# Our own libraries are named here: what a build folder holds, the tool that finds the others leaves out.
set(same_version "(= ${PROJECT_VERSION})")
set(QV_WHAT "qvGraph draws pages of graphs: lines, symbols, bars, functions and\nlegends on linear and logarithmic axes.")
qv_package(runtime NAME libqvgraph2 SECTION libs NEEDS "tzdata" SUMMARY "graphing control: pages as pictures, PDF and SVG"
  TEXT "${QV_WHAT}\n.\nThis is the library without a window system.")
qv_package(development NAME libqvgraph-dev SECTION libdevel NEEDS "libqvgraph2 ${same_version}"
  SUMMARY "graphing control: headers, CMake package, pkg-config file"
  TEXT "${QV_WHAT}\n.\nThis is what programs that use the library are built with.")
if(TARGET qvgraph-qt6)
  qv_package(qt-runtime NAME libqvgraph-qt6-2 SECTION libs NEEDS "libqvgraph2 ${same_version}"
    SUMMARY "graphing control as a Qt 6 widget"
    TEXT "${QV_WHAT}\n.\nThis is the widget for Qt 6.")
  qv_package(qt-development NAME libqvgraph-qt6-dev SECTION libdevel
    NEEDS "libqvgraph-qt6-2 ${same_version}, libqvgraph-dev ${same_version}, qt6-base-dev"
    SUMMARY "graphing control as a Qt 6 widget: header, pkg-config file"
    TEXT "${QV_WHAT}\n.\nThis is what programs that use the widget are built with.")
endif()
if(TARGET qvplot)
  set(needed "libqvgraph2 ${same_version}")
  if(TARGET qvplot_desktop)
    string(APPEND needed ", libqvgraph-qt6-2 ${same_version}")
  endif()
  qv_package(program NAME qvplot SECTION science NEEDS "${needed}" SUMMARY "draw columns of files, and functions"
    TEXT "qvplot draws columns of tables of text, JSON and .npy arrays, dates\nincluded, as lines, bars, areas, histograms, boxes or heat maps, and\nfunctions given as text, into a window, a file or on paper.")
endif()
include(CPack)
