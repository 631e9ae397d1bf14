# lumo_use_mutants(LIST): puts the copies below LUMO_MUTANTS in the place of the sources they were made of.
function(lumo_use_mutants list)
  set(sources ${${list}})
  file(GLOB_RECURSE copies RELATIVE ${LUMO_MUTANTS}/lumo ${LUMO_MUTANTS}/lumo/*.cpp)
  foreach(copy ${copies})
    list(FIND sources ${CMAKE_CURRENT_SOURCE_DIR}/${copy} at)
    if(at EQUAL -1)
      message(FATAL_ERROR "${LUMO_MUTANTS}/lumo/${copy} is the copy of no source")
    endif()
    list(REMOVE_AT sources ${at})
    list(APPEND sources ${LUMO_MUTANTS}/lumo/${copy})
  endforeach()
  # What the mutants do to a warning is nothing that anybody wants to read.
  list(TRANSFORM copies PREPEND ${LUMO_MUTANTS}/lumo/)
  set_source_files_properties(${copies} PROPERTIES
    COMPILE_OPTIONS "-w;-include;${CMAKE_SOURCE_DIR}/tests/mutation/mutant.h"
    OBJECT_DEPENDS ${CMAKE_SOURCE_DIR}/tests/mutation/mutant.h)
  set(${list} ${sources} PARENT_SCOPE)
endfunction()
