# The Debian packages that the scripts need. Read by the other scripts.

# What compiles the project.
build_packages=(g++ cmake ninja-build pkg-config libpoco-dev libpcre2-dev
  libre2-dev libcli11-dev libedit-dev)

# What its tests need beyond that.
test_packages=("${build_packages[@]}" libgtest-dev libgmock-dev python3
  binutils fish graphviz mandoc strace time zsh)

# What each leg of script/check needs.
format_packages=(git clang-format)
docs_packages=(mandoc doxygen)
tidy_packages=(git clang-tidy "${build_packages[@]}")
asan_clang_packages=(clang libclang-rt-dev "${test_packages[@]}")
release_clang_packages=(clang "${test_packages[@]}")
install_packages=(clang debootstrap doxygen dpkg-dev file lintian python3
  "${build_packages[@]}")
coverage_packages=(gcovr "${test_packages[@]}")
fuzz_packages=(clang libclang-rt-dev libgtest-dev libgmock-dev
  "${build_packages[@]}")
valgrind_packages=(valgrind "${test_packages[@]}")

# The GNU name of a foreign Debian architecture.
foreign_triplet() { # ARCH
  case $1 in
    i386) echo i686-linux-gnu ;;
    armhf) echo arm-linux-gnueabihf ;;
    arm64) echo aarch64-linux-gnu ;;
    s390x) echo s390x-linux-gnu ;;
    *) echo "unknown architecture: $1" >&2; return 1 ;;
  esac
}

# What a bare Debian needs.
bare_packages=(debootstrap git)

# What the benchmarks need beyond what compiles the project: a library, the
# filters to compare with, and what measures and draws.
bench_packages=("${build_packages[@]}" libbenchmark-dev grep pcre2-utils ripgrep
  time python3 python3-matplotlib)
