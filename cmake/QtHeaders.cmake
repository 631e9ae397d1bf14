option(LUMO_PCH "Precompile Qt's headers: builds faster, but hides missing #includes" OFF)

# lumo_qt_headers(TARGET [FROM OTHER] [HEADERS …]): with LUMO_PCH the target uses precompiled Qt headers, its own or
# those of another target with the same definitions.
function(lumo_qt_headers target)
  if(NOT LUMO_PCH)
    return()
  endif()
  cmake_parse_arguments(arg "" "FROM" "HEADERS" ${ARGN})
  if(arg_FROM)
    target_precompile_headers(${target} REUSE_FROM ${arg_FROM})
  else()
    target_precompile_headers(${target} PRIVATE <QtWidgets> <functional> <memory> ${arg_HEADERS})
  endif()
  target_compile_options(${target} PRIVATE -fpch-preprocess) # ccache needs it
endfunction()
