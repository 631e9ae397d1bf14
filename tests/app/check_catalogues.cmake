# Fails when a text of the application lacks its translation, or a catalogue holds one that nobody uses.
# cmake -D LUPDATE=… -D ROOT=… -D SCRATCH=… -P check_catalogues.cmake
file(MAKE_DIRECTORY ${SCRATCH})
foreach(language en ru)
  set(copy ${SCRATCH}/app_${language}.ts)
  configure_file(${ROOT}/app/language/app_${language}.ts ${copy} COPYONLY)
  # The include path makes lupdate see the namespace that a class stands in, a part of its context.
  execute_process(COMMAND ${LUPDATE} -silent -locations none -I ${ROOT} ${ROOT}/app -ts ${copy}
    RESULT_VARIABLE result ERROR_VARIABLE said)
  if(NOT result EQUAL 0 OR said)
    message(SEND_ERROR "lupdate: ${said}")
  endif()
  file(STRINGS ${copy} lines REGEX "<source>|type=\"(unfinished|vanished|obsolete)\"" ENCODING UTF-8)
  set(source "")
  foreach(line IN LISTS lines)
    if(line MATCHES "<source>")
      set(source "${line}")
    else()
      message(SEND_ERROR "app_${language}.ts: ${source} ${line}")
    endif()
  endforeach()
endforeach()
