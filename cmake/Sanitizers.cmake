option(LUMO_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
if(LUMO_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
  add_link_options(-fsanitize=address,undefined)
  add_library(lsan_suppressions OBJECT ${CMAKE_CURRENT_LIST_DIR}/lsan_suppressions.cpp)
  link_libraries($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:$<TARGET_OBJECTS:lsan_suppressions>>)
endif()

option(LUMO_FUZZ "Build the fuzzers of tests/fuzz; needs Clang" OFF)
if(LUMO_FUZZ)
  # What fuzzer-no-link stands for, but for its ban of built-in functions: constants need strlen.
  add_compile_options(-include ${CMAKE_CURRENT_LIST_DIR}/clang_strlen.h)
  add_compile_options(-fsanitize-coverage=inline-8bit-counters,indirect-calls,trace-cmp,pc-table
                      -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer
                      -gline-tables-only)
  add_link_options(-fsanitize=address,undefined)
endif()
