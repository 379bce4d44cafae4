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
            # Coverage has to find the files, though.
            $<IF:$<BOOL:${QOR_COVERAGE}>,-fmacro-prefix-map,-ffile-prefix-map>=${CMAKE_SOURCE_DIR}/=)

# How what ships is compiled beyond that: so that a defect is harder to exploit.
# Sanitizers bring checks of their own, and fortified functions would hide from them.
# A level of fortification that whoever builds asks for stands.
add_library(qor_shipped_options INTERFACE)
target_link_libraries(qor_shipped_options INTERFACE qor_project_options)
if(NOT QOR_SANITIZE)
  target_compile_options(qor_shipped_options INTERFACE -fstack-protector-strong)
  if(NOT CMAKE_CXX_FLAGS MATCHES _FORTIFY_SOURCE)
    target_compile_options(
      qor_shipped_options
      INTERFACE $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE>
                $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
  endif()
endif()
target_link_options(qor_shipped_options INTERFACE -Wl,-z,relro -Wl,-z,now
                    -Wl,-z,noexecstack)

if(QOR_SANITIZE)
  set(sanitize -fsanitize=${QOR_SANITIZE} -fno-sanitize-recover=all
               -fno-omit-frame-pointer)
  # Records of C functions are declared on both sides of the framework's border;
  # clang takes the same function under the other side's names for another one.
  list(APPEND sanitize $<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=function>)
  add_compile_options(${sanitize})
  # With sanitizers, gcc takes parts of its own standard library for unset.
  target_compile_options(
    qor_project_options
    INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  add_link_options(${sanitize})
  # RE2 keeps a few objects for ever. Unloaded with a plug-in, it would lose them;
  # programs that are linked with it keep it loaded.
  add_link_options(-Wl,--push-state,--no-as-needed -lre2 -Wl,--pop-state)
endif()

if(QOR_COVERAGE)
  add_compile_options(--coverage -fprofile-abs-path)
  add_link_options(--coverage)
endif()

if(QOR_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
