# The words that tools/tour is told in; read by it, not run. It sets $out, $scratch and $program.

fail() {
    echo "tour: $*" >&2
    import -window root "$out/99-failed.png" 2>/dev/null || :
    cat "$scratch/errors" >&2
    exit 1
}

# await <what> <command>...: asks the command, for ten seconds at most, until it agrees.
await() {
    what=$1
    shift
    tries=0
    until "$@"; do
        tries=$((tries + 1))
        [ $tries -lt 200 ] || fail "$what did not come within ten seconds"
        [ -z "$program" ] || kill -0 "$program" 2>/dev/null || fail "$what: the program has ended"
        sleep 0.05
    done
}

# --- the program -----------------------------------------------------------------------------

start() {
    known=''  # the display gives the numbers of windows out again
    "$scratch/bin/zorvane" >"$scratch/errors" 2>&1 &
    program=$!
}

ended() { ! kill -0 "$program" 2>/dev/null; }
# finished: waits for the program, which must have nothing to complain of.
finished() {
    running=$program program=''
    tries=0
    while kill -0 "$running" 2>/dev/null; do
        tries=$((tries + 1))
        [ $tries -lt 200 ] || { program=$running; fail 'the program is still running'; }
        sleep 0.05
    done
    code=0
    wait "$running" || code=$?
    [ $code = 0 ] || fail "the program ended with $code"
    [ ! -s "$scratch/errors" ] || fail 'the program complained:'
}

# --- windows ---------------------------------------------------------------------------------

active() { xdotool getactivewindow 2>/dev/null || echo none; }
isNew() {
    found=$(active)
    case " $known none " in *" $found "*) return 1 ;; esac
    [ "$(xdotool getwindowname "$found" 2>/dev/null)" = "$1" ]
}
isActive() { [ "$(active)" = "$1" ]; }
isGone() { ! xprop -id "$1" WM_STATE 2>/dev/null | grep -q Normal; }
# Sets X, Y, WIDTH and HEIGHT: the window without its frame, in pixels of the screen.
geometry() {
    eval "$(xwininfo -id "$1" | sed -n -e 's/.*Absolute upper-left \([XY]\): */\1=/p' \
        -e 's/^ *Width: /WIDTH=/p' -e 's/^ *Height: /HEIGHT=/p')"
}
isOnScreen() {
    geometry "$1"
    [ "$X" -ge 0 ] && [ "$Y" -ge 0 ] && [ $((X + WIDTH)) -le "${screen%x*}" ] &&
        [ $((Y + HEIGHT)) -le "${screen#*x}" ]
}

# window <name> <caption>: waits until a window not seen before has come to the front, all of it on
# the screen.
window() {
    await "the window '$1' (\"$2\")" isNew "$2"
    known="$known $found"
    eval "window_$1=$found"
    await "all of '$1' on the screen" isOnScreen "$found"
}

# closed <name> <below>: waits until a window has gone and the one below it is in front again.
closed() {
    eval "gone=\$window_$1 below=\$window_$2"
    await "the end of '$1'" isGone "$gone"
    await "'$2' in front" isActive "$below"
}

# --- hands -----------------------------------------------------------------------------------

keys() { xdotool key --delay 40 "$@"; }
write() { xdotool type --delay 12 "$1"; }

# point <x> <y>: puts the pointer into the active window, at a share of it or so many pixels at
# scale 1 from its left and upper edge; from its right and lower one, when negative.
point() {
    geometry "$(active)"
    # shellcheck disable=SC2046 # two words
    xdotool mousemove $(awk -v scale="${QT_SCALE_FACTOR:-1}" -v x="$1" -v y="$2" -v left="$X" \
        -v top="$Y" -v width="$WIDTH" -v height="$HEIGHT" '
        function at(wish, from, size) {
            if (wish ~ /%$/) return from + size * wish / 100
            return from + (wish < 0 ? size : 0) + wish * scale
        }
        BEGIN { printf "%d %d", at(x, left, width), at(y, top, height) }')
}
click() {
    point "$1" "$2"
    xdotool click 1
}
# drag <dx> <dy>: takes the active window by its title bar and moves it, in steps as a hand does, by
# so many pixels of the screen.
drag() {
    geometry "$(active)"
    xdotool mousemove $((X + WIDTH / 3)) $((Y - 8)) mousedown 1
    for _ in 1 2 3 4 5; do
        xdotool mousemove_relative --sync -- $(($1 / 5)) $(($2 / 5))
    done
    xdotool mouseup 1
}

# --- eyes ------------------------------------------------------------------------------------

seen() { import -window root -depth 8 rgb:- | cksum; }

# rest: waits until the screen and the program's processor time stand still (or goes on after a
# while: a cursor blinks).
rest() {
    before=
    tries=0
    while [ $tries -lt 60 ]; do
        tries=$((tries + 1))
        sleep 0.1
        now=$(seen)$(cut -d ' ' -f 14,15 "/proc/$program/stat")
        [ "$now" != "$before" ] || return 0
        before=$now
    done
}

pictures=0
shown=''
# picture <name>: what is on the screen now, which is not what the last picture showed.
picture() {
    rest
    colours=$(import -window "$(active)" -format %k info: 2>/dev/null || echo 0)
    [ "$colours" -gt 16 ] || fail "'$1' came without content ($colours colours)"
    [ "$(seen)" != "$shown" ] || fail "nothing has changed for '$1'"
    shown=$(seen)
    pictures=$((pictures + 1))
    file=$(printf '%02d-%s.png' $pictures "$1")
    import -window root "$out/$file"
    echo "  $file"
}
# colour <x> <y>: that of one pixel of the active window.
colour() {
    point "$1" "$2"
    eval "$(xdotool getmouselocation --shell)"
    import -window root -crop "1x1+$X+$Y" -depth 8 -format '%[hex:u.p{0,0}]' info:
}
# holds <file> <pattern>...: every pattern is matched by a line of a file that is soon written.
holds() {
    await "the file $1" test -s "$scratch/$1"
    for pattern in "$@"; do
        [ "$pattern" = "$1" ] || grep -qE "$pattern" "$scratch/$1" ||
            { cat "$scratch/$1" >&2; fail "$1 does not hold $pattern"; }
    done
}
