# Shared build rules. Every library of the core and of the platform layers is built by
# tabrow_library(), every test program by tabrow_test(), so that flags stay in one place.

function(tabrow_warnings target)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4)
  else()
    target_compile_options(${target} PRIVATE -Wall -Wextra)
    if(TABROW_WERROR)
      target_compile_options(${target} PRIVATE -Werror)
    endif()
  endif()
endfunction()

if(TABROW_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()

if(TABROW_FUZZ)
  # Libraries get coverage instrumentation; the fuzz targets themselves link the driver.
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

if(WIN32 AND NOT MSVC)
  # One self-contained executable: Wine then needs no MinGW runtime DLL.
  add_link_options(-static)
  add_compile_definitions(UNICODE _UNICODE)
endif()

# tabrow_library(NAME SOURCES... [DEPS libs...])
# A static library of the files given; the include root is src/ for every library.
function(tabrow_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_DEPS})
  tabrow_warnings(${name})
endfunction()

# tabrow_test(NAME SOURCES... [DEPS libs...])
# One GoogleTest program; on native builds each test is registered with CTest.
function(tabrow_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_DEPS} tabrow_test_support)
  tabrow_warnings(${name})
  if(CMAKE_CROSSCOMPILING)
    # Run under Wine by scripts/test-windows, not by CTest.
    set_property(GLOBAL APPEND PROPERTY TABROW_WINDOWS_TESTS ${name})
  else()
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
      PROPERTIES ENVIRONMENT "TABROW_SAMPLE_DATA=${TABROW_SAMPLE_DATA}")
  endif()
endfunction()

# Adds each listed sub-folder that has a CMakeLists.txt, in the order given (dependencies first).
function(tabrow_add_existing_subdirectories)
  foreach(dir ${ARGN})
    if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${dir}/CMakeLists.txt)
      add_subdirectory(${dir})
    endif()
  endforeach()
endfunction()
