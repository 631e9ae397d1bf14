# For tests/mutation.
set(LUMO_MUTANTS "" CACHE PATH "Folder with mutated copies of sources, built instead of these")

# lumo_use_mutants(LIST): replaces the sources in a list by their copies below LUMO_MUTANTS, where there are any.
function(lumo_use_mutants list)
  set(sources "")
  foreach(source ${${list}})
    file(RELATIVE_PATH name ${CMAKE_SOURCE_DIR} ${source})
    set(copy ${LUMO_MUTANTS}/${name})
    if(LUMO_MUTANTS AND name MATCHES "\\.cpp$" AND EXISTS ${copy})
      # moc looks for a header beside its source, so it must be listed.
      string(REGEX REPLACE "cpp$" "h" header ${source})
      if(EXISTS ${header})
        list(APPEND sources ${header})
      endif()
      # -w: mutants cause meaningless warnings.
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
