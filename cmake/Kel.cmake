# What every target of the project shares: language level, warnings, sanitizers, the precompiled header, output folders,
# and how a library is published.

include(GNUInstallDirs)
include(GenerateExportHeader)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

# -fPIC everywhere, programs too: Qt asks for it, and the precompiled header then fits every target.
add_compile_options(-fPIC -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual
                    -Winvalid-pch -Werror)
add_compile_definitions(QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
                        QT_DISABLE_DEPRECATED_BEFORE=0x060400)

# Production hardens what it can at no cost: checked string functions, no writable table of addresses.
add_compile_definitions($<$<CONFIG:Release>:_FORTIFY_SOURCE=2>)
add_link_options($<$<CONFIG:Release>:-Wl,-z,relro,-z,now>)

option(KEL_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
if(KEL_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

option(KEL_FUZZ "Build the coverage-guided targets; needs clang" OFF)
if(KEL_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# kel_precompiled(<target>): the target's files start from the project's one precompiled header (cmake/precompiled).
# It saves time and nothing else: a file includes what it uses.
function(kel_precompiled target)
  target_precompile_headers(${target} REUSE_FROM kel_precompiled)
endfunction()

# kel_folder(<target> <sources...>): the static library of one folder of src/. Headers are included from src/
# ("framework/Form.h"); what a folder may include says the table in docs/architecture.md. Layouts (NAME.ui) become ui_NAME.h, by rules
# that the build follows when a layout changes.
function(kel_folder target)
  set(sources ${ARGN})
  set(layouts ${ARGN})
  list(FILTER sources EXCLUDE REGEX "\\.ui$")
  list(FILTER layouts INCLUDE REGEX "\\.ui$")
  qt_wrap_ui(sources ${layouts})
  add_library(${target} STATIC ${sources})
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
  kel_precompiled(${target})
endfunction()

# kel_finds_libraries(<target> <folder>): the installed target finds the published libraries in <folder>, seen from its own,
# so that the tree can stand anywhere. Under /usr they are found without help.
function(kel_finds_libraries target folder)
  if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/${folder}")
  endif()
endfunction()

# kel_shared(<target> <folder> <sources...>): the shared library of a folder of src/, which exports what its headers mark and
# nothing else: the mark of KelDatos is KELDATOS_EXPORT, from the generated header "<folder>/Export.h". Tests of its inside
# link the same objects, <target>_inside, instead of the library.
function(kel_shared target folder)
  set(inside ${target}_inside)
  set(exports ${CMAKE_BINARY_DIR}/exports)
  add_library(${inside} OBJECT ${ARGN})
  add_library(${target} SHARED $<TARGET_OBJECTS:${inside}>)
  # What moc makes of the published headers is among the objects already.
  set_target_properties(${target} PROPERTIES AUTOMOC OFF AUTORCC OFF)
  generate_export_header(${target} EXPORT_FILE_NAME ${exports}/${folder}/Export.h)
  target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS ${exports} FILES ${exports}/${folder}/Export.h)
  set_target_properties(${inside} PROPERTIES CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  target_include_directories(${inside} PUBLIC ${CMAKE_SOURCE_DIR}/src ${exports})
  target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}/src>)
  target_link_libraries(${inside} PUBLIC $<TARGET_PROPERTY:${target},LINK_LIBRARIES>)
  kel_precompiled(${inside})
endfunction()

# kel_published(<target> <name> <headers...>): the shared library is versioned and installed, with these headers of src/
# and no others; hosts link it as Kel::<name>.
function(kel_published target name)
  target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS ${CMAKE_SOURCE_DIR}/src FILES ${ARGN})
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} EXPORT_NAME ${name})
  kel_finds_libraries(${target} .)
  install(TARGETS ${target} EXPORT Kel
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/Kel COMPONENT development)
endfunction()

# kel_program(<target> <sources...>): a program of the project.
function(kel_program target)
  add_executable(${target} ${ARGN})
  kel_precompiled(${target})
endfunction()

# kel_tests(<program> TESTS <classes...> LIBS <libraries...> [SOURCES <more sources...>] [ON_SERVER <classes...>]
# [ON_BOTH <classes...>]): one Qt Test program for a folder, <class>.cpp each, run offscreen, class by class; those of
# ON_SERVER (too, or only) with their databases on a server, those of ON_BOTH with files and on a server.
function(kel_tests program)
  cmake_parse_arguments(ARG "" "" "TESTS;LIBS;SOURCES;ON_SERVER;ON_BOTH" ${ARGN})
  list(APPEND ARG_TESTS ${ARG_ON_BOTH})
  list(APPEND ARG_ON_SERVER ${ARG_ON_BOTH})
  set(sources ${ARG_TESTS} ${ARG_ON_SERVER})
  list(REMOVE_DUPLICATES sources)
  list(TRANSFORM sources APPEND .cpp)
  kel_program(${program} ${sources} ${ARG_SOURCES} ${CMAKE_SOURCE_DIR}/tests/support/TestProgram.cpp
              ${CMAKE_SOURCE_DIR}/tests/support/TestGuard.cpp)
  target_include_directories(${program} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${program} PRIVATE Qt6::Test ${ARG_LIBS})
  set(environment "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;KEL_DATOS=${CMAKE_SOURCE_DIR}/tests/data")
  foreach(test ${ARG_TESTS})
    add_test(NAME ${test} COMMAND ${program} ${test})
    set_tests_properties(${test} PROPERTIES LABELS ${program} TIMEOUT 300 ENVIRONMENT "${environment}")
  endforeach()
  foreach(test ${ARG_ON_SERVER})
    add_test(NAME ${test}_postgres COMMAND ${program} ${test})
    set_tests_properties(${test}_postgres PROPERTIES LABELS ${program} TIMEOUT 300 FIXTURES_REQUIRED postgres
      ENVIRONMENT "${environment};KEL_MOTOR=postgres;KEL_POSTGRES=${CMAKE_BINARY_DIR}/postgres")
  endforeach()
endfunction()
