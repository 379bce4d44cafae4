# The Debian packages that the scripts need. Read by the other scripts.

# What compiles the project.
build_packages=(g++ cmake ninja-build pkg-config libpoco-dev libcli11-dev
  libedit-dev)

# What its tests need beyond that.
test_packages=("${build_packages[@]}" libgtest-dev libgmock-dev python3
  binutils graphviz mandoc strace time zsh)

# What the other checks need.
check_packages=("${test_packages[@]}" git clang libclang-rt-dev clang-format
  clang-tidy gcovr doxygen)

# What packaging and trying the packages needs beyond that.
install_packages=("${check_packages[@]}" debootstrap dpkg-dev file lintian)

# What the 32-bit build needs beyond that, one to a line: compilers, the
# libraries' run-time packages, and GoogleTest's sources. Their architecture is
# added first.
ilp32_packages() {
  printf '%s\n' g++-multilib googletest libedit2:i386
  # Poco's is named after the version of the headers that are installed.
  dpkg-query --showformat '${Depends}' --show libpoco-dev |
    sed 's/.*\(libpocofoundation[0-9]*\).*/\1:i386\n/'
}

# What the tests under valgrind, and those on a bare Debian, need beyond that.
valgrind_packages=(valgrind)
bare_packages=(debootstrap)

# What the benchmarks need beyond what compiles the project: a library, the
# filters to compare with, and what measures and draws.
bench_packages=("${build_packages[@]}" libbenchmark-dev grep pcre2-utils ripgrep
  time python3 python3-matplotlib)
