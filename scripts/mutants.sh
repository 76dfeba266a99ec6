#!/bin/bash
# mutants.sh [NAME...] | [FIRST LAST]: makes each small fault of scripts/mutants.txt, by default all,
# builds what it touches, runs the tests until one fails, and prints which faults survive.
#
# It works on a copy of the tree as it is now, in ${ZEP_MUTANTS:-/tmp/zep-mutants}, whose build stays
# for the next time; remove it with `git worktree remove --force`. One fault takes a minute or two.
set -euo pipefail
cd "$(dirname "$0")/.."
tree=$PWD
list=$tree/scripts/mutants.txt
copy=${ZEP_MUTANTS:-/tmp/zep-mutants}

names=() files=() olds=() news=()
read_list() {
    local line part=
    while IFS= read -r line || [ -n "$line" ]; do
        case $line in
            '#'* | '') continue ;;
            '- '*) part=old olds+=("${line:2}") ;;
            '+ '* | +) part=new news+=("${line:2}") ;;
            ' '*) # goes on
                if [ $part = old ]; then olds[-1]+=$'\n'$line; else news[-1]+=$'\n'$line; fi ;;
            *) names+=("${line%% *}") files+=("${line#* }") ;;
        esac
    done <"$list"
    [ ${#names[@]} = ${#olds[@]} ] && [ ${#names[@]} = ${#news[@]} ] ||
        { echo "$list: each fault needs a name, a '-' and a '+'" >&2; exit 2; }
}

# The number of the fault that an argument says: its number or its name.
number_of() {
    local i
    for i in "${!names[@]}"; do
        if [ "$1" = "${names[i]}" ] || [ "$1" = $((i + 1)) ]; then echo "$i"; return; fi
    done
    echo "no such fault: $1" >&2
    exit 2
}

chosen=()
choose() {
    local name
    if [ $# = 0 ]; then
        chosen=("${!names[@]}")
    elif [ $# = 2 ] && [[ $1$2 =~ ^[0-9]+$ ]]; then
        mapfile -t chosen < <(seq "$(number_of "$1")" "$(number_of "$2")")
    else
        for name in "$@"; do chosen+=("$(number_of "$name")"); done
    fi
}

# The text of a file with a fault; an error unless what goes is there just once.
text_with() {
    local text rest
    text=$(cat "$copy/${files[$1]}"; echo .)
    rest=${text#*"${olds[$1]}"}
    if [ "$rest" = "$text" ] || [ "${rest/"${olds[$1]}"/}" != "$rest" ]; then
        echo "${names[$1]}: ${files[$1]} has to have this text once: ${olds[$1]}" >&2
        return 1
    fi
    text=${text/"${olds[$1]}"/"${news[$1]}"}
    printf %s "${text%.}"
}

check_texts() {
    local i bad=0
    for i in "${chosen[@]}"; do text_with "$i" >/dev/null || bad=1; done
    [ $bad = 0 ] || exit 2
}

# Only what differs is copied, so that only that is compiled again.
make_copy() {
    local file
    [ -e "$copy/.git" ] || git worktree add --force --detach "$copy" HEAD >/dev/null
    while IFS= read -r -d '' file; do
        cmp -s "$file" "$copy/$file" && continue
        mkdir -p "$copy/$(dirname "$file")"
        if [ -e "$file" ]; then cp "$file" "$copy/$file"; else rm -f "$copy/$file"; fi
    done < <(git ls-files -z --cached --others --exclude-standard)
}

build() {
    cmake --build "$copy/build" --target zep_tests zep_call_tests zep_pixel_tests zep_hand_tests \
        zepview zepstream >"$copy/build/mutants.log" 2>&1
}

configure() {
    cmake -S "$copy" -B "$copy/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_CXX_FLAGS_RELEASE=-O1 -DCMAKE_LINK_DEPENDS_NO_SHARED=ON -DZEP_BENCH=OFF \
        -DZEP_SAMPLES="${ZEP_SAMPLES:-$tree/../shared/samples}" >/dev/null
}

# Readers and the framework need no display; everything else is drawn somewhere.
rings_of() {
    case $1 in
        zep/framework/* | zep/converters/*) echo zep_tests zep_hand_tests ;;
        viewer/*) echo zep_tests zep_hand_tests ;;
        *) echo zep_tests zep_call_tests zep_pixel_tests zep_hand_tests ;;
    esac
}

# Prints the first test that fails; nothing where all pass.
first_failure() {
    local ring output status
    for ring in $(rings_of "$1"); do
        status=0
        output=$(cd "$copy/build" && timeout -k 5 "${ZEP_MUTANT_SECONDS:-300}" \
            "$tree/scripts/with-display.sh" "bin/$ring" --gtest_fail_fast --gtest_brief=1 2>&1) ||
            status=$?
        [ $status = 0 ] && continue
        grep -m1 -oP '\[  FAILED  \] \K[^ ,]+' <<<"$output" || echo "$ring ends with $status"
        return
    done
}

try() {
    local file=$copy/${files[$1]} failed
    cp -p "$file" "$file.kept"
    text_with "$1" >"$file.faulty"
    mv "$file.faulty" "$file"
    if build; then
        failed=$(first_failure "${files[$1]}")
    else
        failed="the compiler"
    fi
    mv "$file.kept" "$file"
    touch "$file"
    if [ -n "$failed" ]; then
        printf '%-22s found by %s\n' "${names[$1]}" "$failed"
    else
        printf '%-22s SURVIVES in %s\n' "${names[$1]}" "${files[$1]}"
        survivors+=("${names[$1]}")
    fi
}

survivors=()
read_list
choose "$@"
make_copy
check_texts
configure
build || { tail -30 "$copy/build/mutants.log" >&2; exit 2; }
sound=$(first_failure everything)
[ -z "$sound" ] || { echo "without any fault already fails: $sound" >&2; exit 2; }
for mutant in "${chosen[@]}"; do try "$mutant"; done
echo "${#survivors[@]} of ${#chosen[@]} survive${survivors[*]:+: ${survivors[*]}}"
[ ${#survivors[@]} = 0 ]
