# The Debian packages that the project needs, by purpose. Sourced by ./run and ./test.
build_packages=(g++ cmake ninja-build ccache libcli11-dev nlohmann-json3-dev libpng-dev
                qt6-base-dev qt6-serialport-dev qt6-svg-dev qt6-multimedia-dev libqt6svg6 libqscintilla2-qt6-dev libqcustomplot-dev fonts-dejavu-core)
test_packages=(libgtest-dev libgmock-dev)
fuzz_packages=(clang libclang-rt-14-dev)
coverage_packages=(clang llvm libclang-rt-14-dev python3)
lint_packages=(clang-format clang-tidy)
bench_packages=(tcc python3 time libvterm-dev lua5.4 simavr gcc-avr avr-libc)
package_packages=(dpkg-dev lintian desktop-file-utils appstream)
package_test_packages=(debootstrap)
