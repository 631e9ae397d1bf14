option(LUMO_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
if(LUMO_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -O1 -g1)
  add_link_options(-fsanitize=address,undefined)
  add_library(lsan_suppressions OBJECT ${CMAKE_CURRENT_LIST_DIR}/lsan_suppressions.cpp)
  link_libraries($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:$<TARGET_OBJECTS:lsan_suppressions>>)
endif()

set(LUMO_FUZZ "" CACHE STRING
  "Build the fuzzers of tests/fuzz with Clang: 'fast', or 'address' for AddressSanitizer")
if(LUMO_FUZZ)
  # As -fsanitize=fuzzer-no-link, but with built-in functions: constants need strlen.
  add_compile_options(-include ${CMAKE_CURRENT_LIST_DIR}/clang_strlen.h)
  add_compile_options(-fsanitize-coverage=inline-8bit-counters,pc-table -gline-tables-only)
  if(LUMO_FUZZ STREQUAL "address")
    add_compile_options(-fsanitize-coverage=trace-cmp,indirect-calls)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
  else()
    # Undefined behaviour traps, which needs no runtime library. Compared values are not traced: the dictionary
    # finds as much in half the time.
    add_compile_options(-fsanitize=undefined -fsanitize-trap=undefined)
  endif()
endif()
