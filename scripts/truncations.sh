#!/bin/bash
# truncations.sh FILE...: cuts each file at 200 places and lets `zepview --info` read each piece. A
# piece may be refused, with a message. It may not crash, nor take more than twice the memory or the
# time of the whole file. What is below 192 MB and 2 seconds passes: a process costs as much.
# ZEPVIEW names another program, CUTS another number of places.
set -u
zepview=${ZEPVIEW:-$(dirname "$0")/../build/release/bin/zepview}
cuts=${CUTS:-200}
floor_kb=$((192 * 1024))
floor_ms=2000
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8

[ $# -gt 0 ] || { echo "usage: truncations.sh FILE..." >&2; exit 2; }
[ -x "$zepview" ] || { echo "truncations.sh: no program at $zepview" >&2; exit 2; }
command -v /usr/bin/time >/dev/null || { echo "truncations.sh: please install time" >&2; exit 2; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

larger() { echo $(($1 > $2 ? $1 : $2)); }

# Sets status, kilobytes and milliseconds (of the processor) of reading a file within a time.
run() { # FILE SECONDS
    /usr/bin/time -q -o "$work/cost" -f '%M %U %S' timeout -k 1 "$2" \
        "$zepview" --info "$1" >/dev/null 2>"$work/errors"
    status=$?
    read -r kilobytes user system < <(tail -n 1 "$work/cost")
    milliseconds=$((10#${user/./}0 + 10#${system/./}0))
}

fail() { # WHAT FILE SIZE
    echo "$2, first $3 bytes: $1"
    sed 's/^/    /' "$work/errors" | head -n 5
    failures=$((failures + 1))
}

check() { # FILE SIZE
    case $status in
    0 | 1) ;;
    124 | 137) fail "takes too long" "$1" "$2" ;;
    *) fail "ends with $status" "$1" "$2" ;;
    esac
    [ "$kilobytes" -le "$most_kb" ] || fail "takes $kilobytes kB of $most_kb" "$1" "$2"
    [ "$milliseconds" -le "$most_ms" ] || fail "takes $milliseconds ms of $most_ms" "$1" "$2"
}

failures=0
for file in "$@"; do
    size=$(stat -L -c %s "$file") || exit 2
    # Pictures and other parts of a model are found beside it.
    folder=$work/model
    mkdir -p "$folder"
    find "$(realpath "$(dirname "$file")")" -maxdepth 1 -type f ! -name "$(basename "$file")" \
        -exec ln -sf {} "$folder" \;
    piece=$folder/$(basename "$file")
    cp "$file" "$piece"
    run "$piece" 600
    [ "$status" -le 1 ] || fail "ends with $status" "$file" "$size"
    most_kb=$(larger $floor_kb $((2 * kilobytes)))
    most_ms=$(larger $floor_ms $((2 * milliseconds)))
    for ((i = 0; i < cuts; i++)); do
        head -c $((size * i / cuts)) "$file" >"$piece"
        run "$piece" $((most_ms * 5 / 1000 + 1))
        check "$file" $((size * i / cuts))
    done
    rm -rf "$folder"
    echo "$file: $cuts pieces"
done
echo "$failures failures"
[ "$failures" -eq 0 ]
