# Fails when a text of a part (the package, the application) has no translation, when the translation lacks the
# placeholder of a number, or when a catalogue contains an unused text.
# cmake -D LUPDATE=… -D LCONVERT=… -D ROOT=… -D PART=app -D SCRATCH=… -P check_catalogues.cmake
file(MAKE_DIRECTORY ${SCRATCH})
# Captions of the package's statements stand with the statements.
set(folders ${ROOT}/${PART})
if(PART STREQUAL "lumo")
  list(APPEND folders ${ROOT}/program)
endif()
foreach(language en ru)
  set(copy ${SCRATCH}/${PART}_${language}.ts)
  file(GLOB catalogues ${ROOT}/${PART}/language/*_${language}.ts ${ROOT}/${PART}/resources/language/*_${language}.ts)
  list(FILTER catalogues EXCLUDE REGEX "/finding_")  # whose sources are tables of the check
  execute_process(COMMAND ${LCONVERT} ${catalogues} -o ${copy})
  # With the include paths, lupdate knows a class's namespace, which is part of its context.
  execute_process(COMMAND ${LUPDATE} -silent -locations none -I ${ROOT} -I ${ROOT}/${PART} ${folders} -ts ${copy}
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
      message(SEND_ERROR "${PART}, ${language}: ${source} ${line}")
    endif()
  endforeach()
  file(READ ${copy} text)
  if(NOT source OR text MATCHES "<source>[^<]*%1[^<]*</source>[ \n]*<translation>[^<%]*</translation>")
    message(SEND_ERROR "${PART}, ${language}: no text, or no number in ${CMAKE_MATCH_0}")
  endif()
endforeach()
