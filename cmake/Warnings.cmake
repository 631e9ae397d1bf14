# Interface target with the compiler warnings, linked by every target of the project.
add_library(lumo_warnings INTERFACE)
target_compile_options(lumo_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wconversion-null
  -Wcast-align -Wunused -Wformat=2 -Wimplicit-fallthrough -Werror)
target_compile_definitions(lumo_warnings INTERFACE
  QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_FOREACH QT_DEPRECATED_WARNINGS)
