# Sourced by ./run and ./check: installs what the build needs and stops with one sentence where it cannot.

say() { printf '== %s\n' "$*"; }
stop() {
    printf 'flokluk: %s\n' "$*" >&2
    exit 1
}

# install_packages PACKAGE ...: makes sure that these Debian packages are there; installed ones cost nothing.
install_packages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        say "no apt-get here: expecting the packages listed in README.md to be installed already"
        return
    fi
    local missing=() package
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    local as_root=()
    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || stop "please install these packages as root: ${missing[*]}"
        as_root=(sudo)
    fi
    say "installing ${missing[*]}"
    local log
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update && "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
        tail -n 5 "$log" >&2
        rm -f "$log"
        stop "could not install ${missing[*]} with apt-get (its last words stand above)"
    fi
    rm -f "$log"
}

# install_optional PACKAGE ...: the same for libraries that the build goes on without.
install_optional() {
    local package
    command -v apt-get >/dev/null || return 0
    for package in "$@"; do
        (install_packages "$package") || say "going on without $package"
    done
}

# build PRESET [TARGET ...]: configures once, then builds; quiet unless something goes wrong.
build() {
    local preset=$1
    shift
    command -v cmake >/dev/null || stop "cmake 3.21 or newer is needed and was not found"
    if [ ! -f "build/$preset/build.ninja" ]; then
        say "configuring build/$preset"
        cmake --preset "$preset" >"configure-$preset.log" 2>&1 || {
            tail -n 20 "configure-$preset.log" >&2
            rm -f "configure-$preset.log"
            stop "cmake could not configure the project (its last words stand above)"
        }
        rm -f "configure-$preset.log"
    fi
    say "building build/$preset"
    cmake --build --preset "$preset" ${1:+--target "$@"} || stop "the build failed (see above)"
}

# check_format: whether all C++ files are as clang-format 14 writes them; other versions write some lines otherwise.
check_format() {
    local program files
    for program in clang-format-14 clang-format; do
        if "$program" --version 2>/dev/null | grep -q 'version 14\.'; then
            mapfile -t files < <(git ls-files '*.cpp' '*.h' 2>/dev/null ||
                find . -path ./build -prune -o \( -name '*.cpp' -o -name '*.h' \) -print)
            say "formatting of ${#files[@]} files"
            "$program" --dry-run -Werror "${files[@]}" || stop "clang-format -i mends the lines above"
            return
        fi
    done
    say "the formatting is not looked at: no clang-format 14"
}

# check_texts: whether the files that only other machines read can be read.
check_texts() {
    if python3 -c 'import yaml' 2>/dev/null; then
        say "workflows, citation, versions"
        python3 packaging/check-texts.py || stop "the files above need mending"
    else
        say "workflows and citation are not looked at: no python3-yaml"
    fi
}
