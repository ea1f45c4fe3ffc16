# cmake -DPROGRAM=qrv-widgets -DHELP2MAN=help2man -DSECTIONS=extra.h2m -DOUT=qrv-widgets.1 -P ManPage.cmake
#
# help2man writes the page from `PROGRAM --help` and `--version`; the COMMANDS
# section holds each command's own --help, the list of commands coming from the
# program too. SECTIONS adds what --help does not say (environment, files).
execute_process(COMMAND ${PROGRAM} __complete OUTPUT_VARIABLE commands RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "${PROGRAM} __complete failed: ${failed}")
endif()
string(REGEX REPLACE "\n$" "" commands "${commands}")
string(REPLACE "\n" ";" commands "${commands}")

set(text "[COMMANDS]\n")
foreach(command IN LISTS commands)
  execute_process(COMMAND ${PROGRAM} ${command} --help OUTPUT_VARIABLE help RESULT_VARIABLE failed)
  if(failed)
    message(FATAL_ERROR "${PROGRAM} ${command} --help failed: ${failed}")
  endif()
  # Shown as written: backslashes escaped, no line taken for a request.
  string(REPLACE "\\" "\\e" help "${help}")
  string(REGEX REPLACE "(^|\n)([.'])" "\\1\\\\&\\2" help "${help}")
  string(APPEND text ".SS ${command}\n.nf\n${help}\n.fi\n")
endforeach()
file(READ ${SECTIONS} sections)
get_filename_component(out_dir ${OUT} DIRECTORY)
file(MAKE_DIRECTORY ${out_dir})
file(WRITE ${OUT}.h2m "${text}${sections}")

execute_process(
  COMMAND ${HELP2MAN} --no-info --section=1 --include=${OUT}.h2m
          "--name=draw and run the Quorvane widgets as the phone's widget host does"
          --output=${OUT} ${PROGRAM}
  RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "help2man failed: ${failed}")
endif()
# Installed compressed, as manual pages are on Debian.
execute_process(COMMAND gzip -9nkf ${OUT} RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "gzip ${OUT} failed: ${failed}")
endif()
