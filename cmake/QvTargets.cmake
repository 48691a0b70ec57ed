# Compiler settings shared by every target, and the three kinds of target: library, program, test.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()
find_program(MOLD mold)

add_library(qv_options INTERFACE)
target_compile_options(qv_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion)

# Applied after the cache options are known; QV_WERROR, QV_SANITIZE and QV_FUZZ come from the presets.
function(qv_apply_options target)
  target_link_libraries(${target} PRIVATE qv_options)
  target_include_directories(${target} PUBLIC ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/src)
  if(QV_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(QV_SANITIZE)
    target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-sanitize-recover=all
                                             -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=address,undefined)
  endif()
  if(QV_FUZZ)
    # Contracted products would differ from the release build's.
    target_compile_options(${target} PRIVATE -ffp-contract=off -fno-omit-frame-pointer -fno-sanitize-recover=all
                                             -fsanitize=fuzzer-no-link,address,undefined,float-cast-overflow)
    target_link_options(${target} PUBLIC -fsanitize=address,undefined,float-cast-overflow)
  endif()
  if(MOLD)
    target_link_options(${target} PUBLIC -fuse-ld=mold)
  endif()
endfunction()

# qv_library(name SOURCES file... LINKS target...): the code of one folder. LINKS names the folders it stands
# on, so that the link graph repeats the rule of who may include whom.
function(qv_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC ${arg_LINKS})
  qv_apply_options(${name})
  if(QV_COVERAGE)
    target_compile_options(${name} PRIVATE --coverage)
    target_link_options(${name} PUBLIC --coverage)
  endif()
endfunction()

# qv_public_library(name OBJECTS folder... LINKS target...): a library for others, made of what the folders were
# compiled to. OUTPUT_NAME, version and the headers of include/ come with it; what is not marked QV_EXPORT is hidden.
function(qv_public_library name)
  cmake_parse_arguments(arg "" "EXPORT_NAME" "OBJECTS;LINKS;PUBLIC_LINKS" ${ARGN})
  list(TRANSFORM arg_OBJECTS REPLACE "(.+)" "$<TARGET_OBJECTS:\\1>")
  add_library(${name} ${arg_OBJECTS})
  add_library(qvGraph::${arg_EXPORT_NAME} ALIAS ${name})
  target_link_libraries(${name} PUBLIC ${arg_PUBLIC_LINKS} PRIVATE ${arg_LINKS})
  target_include_directories(${name} PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
                                            $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_compile_features(${name} PUBLIC cxx_std_20)
  set_target_properties(${name} PROPERTIES LINKER_LANGUAGE CXX VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR} EXPORT_NAME ${arg_EXPORT_NAME})
  target_link_options(${name} PRIVATE -Wl,-z,defs)
  if(QV_SANITIZE)
    target_link_options(${name} PUBLIC $<BUILD_INTERFACE:-fsanitize=address,undefined>)
  endif()
  if(QV_COVERAGE)
    target_link_options(${name} PRIVATE --coverage)
  endif()
  if(MOLD)
    target_link_options(${name} PRIVATE -fuse-ld=mold)
  endif()
endfunction()

# qv_program(name SOURCES file... LINKS target...)
function(qv_program name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_LINKS})
  qv_apply_options(${name})
endfunction()

# qv_test(name SOURCES file... LINKS target...): a doctest program; ctest runs it as one test.
function(qv_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
  qv_program(${name} SOURCES ${arg_SOURCES} LINKS qv_test_main ${arg_LINKS} doctest::doctest)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support)
  if(QV_SANITIZE)
    # Most of the time of a sanitized build goes into tests; what they test is optimised all the same.
    target_compile_options(${name} PRIVATE -O0)
  endif()
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300
    ENVIRONMENT "QV_SOURCE_DIR=${PROJECT_SOURCE_DIR};FREETYPE_PROPERTIES=;ASAN_OPTIONS=detect_leaks=1")
endfunction()
