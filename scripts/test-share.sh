#!/bin/bash
# How many of the lines are tests: lines that are neither blank nor comment, for each room, then
# tests against everything. With --files each file of tests/ too, the largest first.
set -euo pipefail
cd "$(dirname "$0")/.."

count_lines() {
    awk -v files="${1:-}" '
        FNR == 1 { inside = 0 }
        {
            code = ""
            rest = $0
            while (rest != "") {
                if (inside) {
                    end = index(rest, "*/")
                    if (!end) break
                    rest = substr(rest, end + 2)
                    inside = 0
                    continue
                }
                if (match(rest, /\/\/|\/\*|"([^"\\]|\\.)*"/) == 0) { code = code rest; break }
                code = code substr(rest, 1, RSTART - 1)
                found = substr(rest, RSTART, RLENGTH)
                rest = substr(rest, RSTART + RLENGTH)
                if (found == "//") break
                if (found == "/*") inside = 1
                else code = code found
            }
            if (code ~ /[^ \t\r]/) ++lines[FILENAME]
        }
        END {
            for (file in lines) {
                depth = split(file, part, "/")
                room = depth > 2 ? part[1] "/" part[2] : part[1]
                rooms[room] += lines[file]
                all += lines[file]
                if (part[1] != "tests") continue
                tests += lines[file]
                if (files) printf "%7d %s\n", lines[file], file | "sort -nr"
            }
            close("sort -nr")
            for (room in rooms) printf "%7d %s\n", rooms[room], room | "sort -k2"
            close("sort -k2")
            printf "%7d of %d lines are tests: %.1f %%\n", tests, all, 100 * tests / all
        }' "${@:2}"
}

[[ ${1:-} == "" || ${1:-} == --files ]] || { echo "usage: $0 [--files]" >&2; exit 2; }
mapfile -d '' sources < <(find zep viewer tools examples bench tests \
    \( -name '*.cpp' -o -name '*.h' \) -print0)
count_lines "${1:-}" "${sources[@]}"
