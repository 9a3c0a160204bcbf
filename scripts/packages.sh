# The Debian packages that the project needs, by purpose. Sourced by ./run and ./test.
build_packages=(g++ cmake ninja-build ccache libcli11-dev nlohmann-json3-dev)
test_packages=(libgtest-dev libgmock-dev)
fuzz_packages=(clang libclang-rt-14-dev)
lint_packages=(clang-format clang-tidy)
bench_packages=(tcc python3 time)
