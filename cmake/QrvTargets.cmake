# Warnings for our own code only; third-party headers come in as SYSTEM.
# -Wnull-dereference is left out: at -O2 g++ 12 reports it inside libstdc++'s
# own vector and map iterators (false positives), which -Werror turns fatal.
set(QRV_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast
    -Wcast-align -Woverloaded-virtual -Wimplicit-fallthrough)
if(QRV_WERROR)
  list(APPEND QRV_WARNINGS -Werror)
endif()

if(QRV_SANITIZE)
  add_compile_options(-fsanitize=${QRV_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${QRV_SANITIZE})
endif()

function(qrv_warnings target)
  target_compile_options(${target} PRIVATE ${QRV_WARNINGS})
endfunction()

# qrv_library(NAME ALIAS DIR [TYPE STATIC|SHARED] [EXCLUDE globs] LINK deps...)
# Sources are every .cpp below DIR, so adding a file needs no edit here.
function(qrv_library name)
  cmake_parse_arguments(Q "" "ALIAS;DIR;TYPE" "LINK;EXCLUDE" ${ARGN})
  if(NOT Q_TYPE)
    set(Q_TYPE STATIC)
  endif()
  file(GLOB_RECURSE srcs CONFIGURE_DEPENDS ${Q_DIR}/*.cpp)
  foreach(ex IN LISTS Q_EXCLUDE)
    list(FILTER srcs EXCLUDE REGEX "${ex}")
  endforeach()
  if(NOT srcs)
    # A folder whose code has not arrived yet still gives a linkable target.
    set(srcs ${CMAKE_CURRENT_BINARY_DIR}/${name}_empty.cpp)
    file(WRITE ${srcs} "")
  endif()
  add_library(${name} ${Q_TYPE} ${srcs})
  add_library(qrv::${Q_ALIAS} ALIAS ${name})
  # Headers are included by their path from the repository root:
  # #include "Platform/store/UserDefaults.hpp".
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${Q_LINK})
  qrv_warnings(${name})
endfunction()
