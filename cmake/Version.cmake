# The version `qrv-widgets --version` prints: the project's version and, when the
# sources are a git checkout, the commit they were configured from. A source
# tarball has no .git and simply leaves the commit out.
set(QRV_BUILD_COMMIT "")
find_package(Git QUIET)
if(GIT_FOUND)
  execute_process(COMMAND ${GIT_EXECUTABLE} rev-parse --show-toplevel
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE qrv_git_top
    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET RESULT_VARIABLE qrv_git_failed)
  # Only this project's own checkout counts, not a repository around a tarball.
  if(NOT qrv_git_failed AND qrv_git_top STREQUAL PROJECT_SOURCE_DIR)
    execute_process(COMMAND ${GIT_EXECUTABLE} describe --always --abbrev=10
      WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE QRV_BUILD_COMMIT
      OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  endif()
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/BuildVersion.hpp.in
               ${PROJECT_BINARY_DIR}/generated/BuildVersion.hpp @ONLY)
