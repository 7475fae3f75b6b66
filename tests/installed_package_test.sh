#!/usr/bin/env bash
# Installs a build into a prefix, moves the prefix, and builds and runs programs against it: by way
# of CMake, of pkg-config, as a subdirectory, static, and as a plug-in that is unloaded while a
# thread that used it lives.
#     installed_package_test.sh BUILD_FOLDER SCRATCH_FOLDER COMPILER
set -euo pipefail
build=$1 scratch=$2 compiler=$3
project=$(dirname "$(dirname "$(readlink -f "$0")")")
consumer=$project/examples/consumer

rm -rf "$scratch"
cmake --install "$build" --prefix "$scratch/first" >/dev/null
mv "$scratch/first" "$scratch/moved"
ls "$scratch"/moved/share/{doc/*/LICENSE,bash-completion/completions/nura-fs} \
    "$scratch/moved/share/fish/vendor_completions.d/nura-fs.fish" >/dev/null
[ ! -e "$build/tools/nura-fs.1" ] || ls "$scratch/moved/share/man/man1/nura-fs.1" >/dev/null
"$scratch/moved/bin/nura-fs" --version

expected="/usr/no such thing is not there
'/etc/passwd/below': not a directory [NotDirectoryError]"
check() {
    "$1" | diff - <(echo "$expected")
}

configure_and_check() { # NAME OPTION...
    cmake -S "$consumer" -B "$scratch/$1" -DCMAKE_CXX_COMPILER="$compiler" "${@:2}" >/dev/null
    cmake --build "$scratch/$1" -j >/dev/null
    check "$scratch/$1/consumer"
}
configure_and_check installed -DCMAKE_PREFIX_PATH="$scratch/moved"
configure_and_check subdirectory -DNURA_SUBDIRECTORY="$project"
configure_and_check static -DNURA_SUBDIRECTORY="$project" -DBUILD_SHARED_LIBS=OFF \
    -DNURA_FILESYSTEM_INSTALL=ON
cmake --install "$scratch/static" --prefix "$scratch/moved-static" >/dev/null
configure_and_check installed-static -DCMAKE_PREFIX_PATH="$scratch/moved-static"

compile() { # PREFIX SOURCE OUTPUT OPTION...
    local -x PKG_CONFIG_PATH
    PKG_CONFIG_PATH=$(dirname "$(find "$scratch/$1" -name nura-filesystem.pc)")
    # shellcheck disable=SC2046
    "$compiler" -std=c++17 -Wall -Wextra -Wpedantic -Werror "$consumer/$2" "${@:4}" \
        $(pkg-config --cflags --libs nura-filesystem) \
        -Wl,-rpath,"$(pkg-config --variable=libdir nura-filesystem)" -o "$scratch/$3"
}
for prefix in moved moved-static; do
    compile "$prefix" main.cpp by-pkg-config
    check "$scratch/by-pkg-config"
done
compile moved plugin.cpp plugin.so -shared -fPIC
"$compiler" -std=c++17 "$consumer/host.cpp" -pthread -ldl -o "$scratch/host"
"$scratch/host" "$scratch/plugin.so"
