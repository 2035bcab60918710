# What ./run and ./test share; read by them, not run. Needs nothing that a bare Debian lacks.

say() { printf '%s\n' "$*"; }
fail() { printf '%s\n' "$*" >&2; exit 1; }

# The packages of the named groups that are not there yet, on one line.
missing_packages() {
    while read -r group package shown; do
        case " $* " in *" $group "*) ;; *) continue ;; esac
        case $shown in
            /*) for file in $shown; do [ -e "$file" ] && continue 2; done ;;
            *) command -v "$shown" >/dev/null && continue ;;
        esac
        printf '%s ' "$package"
    done <<LIST
$(sed -e 's/#.*//' -e '/^[[:space:]]*$/d' tools/packages)
LIST
}

as_root() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

apt_install() {
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -y -o DPkg::Lock::Timeout=120 \
        --no-install-recommends "$@"
}

# need_packages <group>...: installs what is missing, and nothing else.
need_packages() {
    missing=$(missing_packages "$@")
    [ -n "$missing" ] || return 0
    if ! command -v apt-get >/dev/null; then
        # Elsewhere libraries live in other places, so only a missing command is certain;
        # a missing library is named by the configure step.
        say "This system has no apt. By their Debian names, these packages were not found:"
        say "    $missing"
        command -v g++ >/dev/null && command -v cmake >/dev/null && command -v ninja >/dev/null ||
            fail "Please install them (C++20 compiler, CMake 3.21, Ninja, Qt 6.2 Widgets) and try again."
        return 0
    fi
    [ "$(id -u)" = 0 ] || command -v sudo >/dev/null ||
        fail "Missing packages. As root, run: apt-get install --no-install-recommends $missing"
    say "Installing: $missing"
    # shellcheck disable=SC2086 # one word for each package
    {
        updated=no
        if ! apt-get -s --no-install-recommends install $missing >/dev/null 2>&1; then
            as_root apt-get update && updated=yes
        fi
        apt_install install $missing || {
            # Old lists name files that the mirror has since replaced.
            [ $updated = no ] && as_root apt-get update && apt_install install $missing
        } || fail "apt could not install: $missing(Debian 12 or newer has them all)."
    }
}

# build_preset <name>: configures when that is due, builds, and is silent when all is up to date.
build_preset() {
    dir=build/$1
    # A tree that was moved or copied carries absolute paths that lead elsewhere.
    if [ -f "$dir/CMakeCache.txt" ] && [ "$(grep -cxF -e CMAKE_GENERATOR:INTERNAL=Ninja \
        -e "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD" "$dir/CMakeCache.txt")" != 2 ]; then
        rm -rf "$dir"
    fi
    if [ ! -f "$dir/build.ninja" ] || [ ! -f "$dir/configured" ] ||
        [ -n "$(find CMakePresets.json -newer "$dir/configured")" ]; then
        cmake --preset "$1" || fail "Configuring failed; see above."
        : >"$dir/configured"
    fi
    case $(ninja -C "$dir" -n 2>/dev/null) in
        *"no work to do"*) return 0 ;;
    esac
    NINJA_STATUS='[%p] %f/%t ' cmake --build --preset "$1" || fail "The build failed; see above."
}
