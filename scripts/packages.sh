#!/usr/bin/env bash
# Installs the Debian packages that the project uses, if any is missing. This is the one list of them.
#
# scripts/packages.sh [build|test|bench|package|web|docs|cross]
#     build: the library, its converter; test: what the tests need as well; bench: the libraries to compare with, and what
#     bench/report.sh uses; package: what scripts/package.sh uses; web: the module for browsers, and its tests; docs: what
#     makes the documents' pictures; cross: building for other machines, and emulators of them
set -euo pipefail

build=(g++ cmake make pkg-config libcli11-dev libpng-dev libtiff-dev libaravis-dev libusb-1.0-0-dev)
test=("${build[@]}" gcc libgtest-dev clang-14 libclang-rt-14-dev clang-format-14 clang-tidy-14 qemu-user binutils abigail-tools gcovr help2man
    libopencv-imgproc-dev libgstreamer1.0-dev libgstreamer-plugins-base1.0-dev gstreamer1.0-plugins-base
    python3-numpy python3-pytest python3-hypothesis python3-pip python3-venv python3-wheel mypy
    mkdocs mkdocs-material python3-pil python3-gi gir1.2-aravis-0.8 python3-distributed qtbase5-dev libeigen3-dev)
bench=("${build[@]}" libopencv-imgproc-dev libyuv-dev libdc1394-dev libswscale-dev python3-matplotlib
    linux-perf binutils llvm-19)
package=("${build[@]}" build-essential debhelper devscripts dpkg-dev debootstrap help2man lintian
    binutils libgtest-dev libgstreamer1.0-dev libgstreamer-plugins-base1.0-dev gstreamer1.0-plugins-base
    dh-python pybuild-plugin-pyproject python3-all python3-setuptools emscripten esbuild nodejs)
web=("${build[@]}" googletest emscripten nodejs esbuild chromium chromium-driver python3-selenium)
docs=(python3-opencv python3-skimage python3-scipy python3-pil mkdocs mkdocs-material)
cross=("${build[@]}" g++-aarch64-linux-gnu qemu-user googletest llvm-19
    g++-mingw-w64-x86-64-posix libz-mingw-w64-dev dpkg-dev wine wine64)

case ${1:-build} in
test) wanted=("${test[@]}") ;;
bench) wanted=("${bench[@]}") ;;
package) wanted=("${package[@]}") ;;
web) wanted=("${web[@]}") ;;
docs) wanted=("${docs[@]}") ;;
cross) wanted=("${cross[@]}") ;;
*) wanted=("${build[@]}") ;;
esac

missing=()
for package in "${wanted[@]}"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

echo "Installing Debian packages: ${missing[*]}"
as_root=()
[ "$(id -u)" = 0 ] || as_root=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
