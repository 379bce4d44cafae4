# How this project's own code is compiled. An INTERFACE target, linked privately
# and never exported.
add_library(qor_project_options INTERFACE)

target_compile_options(
  qor_project_options
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Werror
            # Traces name source files; they shall not name this machine's folders.
            -ffile-prefix-map=${CMAKE_SOURCE_DIR}/=)

if(QOR_SANITIZE)
  set(sanitize -fsanitize=${QOR_SANITIZE} -fno-sanitize-recover=all
               -fno-omit-frame-pointer)
  add_compile_options(${sanitize})
  add_link_options(${sanitize})
endif()

if(QOR_COVERAGE)
  add_compile_options(--coverage -fprofile-abs-path)
  add_link_options(--coverage)
endif()

if(QOR_ILP32)
  add_compile_options(-m32)
  add_link_options(-m32)
endif()
