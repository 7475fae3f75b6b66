#!/usr/bin/env bash
# Installs a build into a prefix, moves the prefix, and builds and runs programs against it: by way
# of CMake, of pkg-config, as a subdirectory, and as a plug-in that is unloaded while a thread that
# used it lives.
#     installed_package_test.sh BUILD_FOLDER SCRATCH_FOLDER COMPILER
set -euo pipefail
build=$1 scratch=$2 compiler=$3
export CMAKE_GENERATOR=Ninja
project=$(dirname "$(dirname "$(readlink -f "$0")")")
consumer=$project/examples/consumer

rm -rf "$scratch"
mkdir -p "$scratch"
cmake --install "$build" --prefix "$scratch/first" >/dev/null
mv "$scratch/first" "$scratch/moved"
export PKG_CONFIG_PATH
PKG_CONFIG_PATH=$(dirname "$(find "$scratch/moved" -name nura-filesystem.pc)")
export LD_LIBRARY_PATH
LD_LIBRARY_PATH=$(dirname "$PKG_CONFIG_PATH")

expected="/usr/no such thing is not there
'/etc/passwd/below': not a directory [NotDirectoryError]"
check() {
    local output
    output=$("$1")
    [ "$output" = "$expected" ] || { printf '%s printed:\n%s\n' "$1" "$output"; exit 1; }
}

configure_and_check() { # NAME OPTION...
    cmake -S "$consumer" -B "$scratch/$1" -DCMAKE_CXX_COMPILER="$compiler" "${@:2}" >/dev/null
    cmake --build "$scratch/$1" -j >/dev/null
    check "$scratch/$1/consumer"
}
configure_and_check installed -DCMAKE_PREFIX_PATH="$scratch/moved"
configure_and_check subdirectory -DNURA_SUBDIRECTORY="$project"
configure_and_check static -DNURA_SUBDIRECTORY="$project" -DBUILD_SHARED_LIBS=OFF

compile() { # SOURCE OUTPUT OPTION...
    # shellcheck disable=SC2046
    "$compiler" -std=c++17 -Wall -Wextra -Wpedantic -Werror "$consumer/$1" "${@:3}" \
        $(pkg-config --cflags --libs nura-filesystem) -o "$scratch/$2"
}
compile main.cpp by-pkg-config
check "$scratch/by-pkg-config"
compile plugin.cpp plugin.so -shared -fPIC
"$compiler" -std=c++17 "$consumer/host.cpp" -pthread -ldl -o "$scratch/host"
"$scratch/host" "$scratch/plugin.so"
