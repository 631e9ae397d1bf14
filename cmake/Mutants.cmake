# For tests/mutation: copies of sources that stand in for them, in folders as here.
set(LUMO_MUTANTS "" CACHE PATH "Folder with mutated copies of sources, to be built in their place")

# lumo_use_mutants(LIST): puts the copies below LUMO_MUTANTS in the place of the sources they were made of.
function(lumo_use_mutants list)
  set(sources "")
  foreach(source ${${list}})
    file(RELATIVE_PATH name ${CMAKE_SOURCE_DIR} ${source})
    set(copy ${LUMO_MUTANTS}/${name})
    if(LUMO_MUTANTS AND name MATCHES "\\.cpp$" AND EXISTS ${copy})
      # A header is looked for beside its source, to be given to moc.
      string(REGEX REPLACE "cpp$" "h" header ${source})
      if(EXISTS ${header})
        list(APPEND sources ${header})
      endif()
      # What the mutants do to a warning is nothing that anybody wants to read.
      set_source_files_properties(${copy} PROPERTIES
        COMPILE_OPTIONS "-w;-O1;-include;${CMAKE_SOURCE_DIR}/tests/mutation/mutant.h"
        OBJECT_DEPENDS ${CMAKE_SOURCE_DIR}/tests/mutation/mutant.h)
      set(source ${copy})
    endif()
    list(APPEND sources ${source})
  endforeach()
  list(REMOVE_DUPLICATES sources)
  set(${list} ${sources} PARENT_SCOPE)
endfunction()
