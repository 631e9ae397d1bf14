option(LUMO_PCH "Compile Qt's headers once a library, which builds faster and hides a missing #include" OFF)

# lumo_qt_headers(TARGET [FROM OTHER] [HEADERS …]): the target finds Qt's headers compiled; those of another
# target, where it has the same definitions.
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
  target_compile_options(${target} PRIVATE -fpch-preprocess) # a compiler cache asks for it
endfunction()
