# The Debian packages that the scripts need. Read by the other scripts.

# What compiles the project.
build_packages=(g++ cmake ninja-build pkg-config libpoco-dev libpcre2-dev
  libre2-dev libcli11-dev libedit-dev)

# What its tests need beyond that.
test_packages=("${build_packages[@]}" libgtest-dev libgmock-dev python3
  binutils graphviz mandoc strace time zsh)

# What the other checks need.
check_packages=("${test_packages[@]}" git clang libclang-rt-dev clang-format
  clang-tidy gcovr doxygen)

# What packaging and trying the packages needs beyond that.
install_packages=("${check_packages[@]}" debootstrap dpkg-dev file lintian)

# What the 32-bit build needs beyond that: compilers, and GoogleTest's sources.
ilp32_packages=(g++-multilib googletest)

# The libraries of a foreign architecture, one to a line: those whose headers are
# installed, in the same versions of their interfaces.
foreign_libraries() {
  dpkg-query --showformat '${Depends}\n' --show libpoco-dev libpcre2-dev \
    libre2-dev libedit-dev | tr -s ', ' '\n' |
    grep -Ex '(libpocofoundation|libpcre2-8-|libre2-|libedit)[0-9]+(t64)?'
}

# What the tests under valgrind, and those on a bare Debian, need beyond that.
valgrind_packages=(valgrind)
bare_packages=(debootstrap)

# What the benchmarks need beyond what compiles the project: a library, the
# filters to compare with, and what measures and draws.
bench_packages=("${build_packages[@]}" libbenchmark-dev grep pcre2-utils ripgrep
  time python3 python3-matplotlib)
