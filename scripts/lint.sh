#!/bin/bash
# lint.sh [FILE...]: layout (clang-format) and faults (clang-tidy) of the sources, by default of all.
# With --format only the layout; with --tidy only the faults.
set -euo pipefail
cd "$(dirname "$0")/.."

format=true
tidy=true
case ${1:-} in
--format) tidy=false && shift ;;
--tidy) format=false && shift ;;
esac
if [ $# -gt 0 ]; then
    files=("$@")
else
    mapfile -t files < <(git ls-files '*.cpp' '*.h')
fi
for tool in clang-format $($tidy && echo clang-tidy clang++); do
    command -v "$tool" >/dev/null || { echo "Please install $tool" >&2; exit 1; }
done

! $format || clang-format --dry-run -Werror "${files[@]}"
$tidy || exit 0

# The sources as clang compiles them; moc's output is part of some.
cmake --preset tidy >/dev/null
cmake --build --preset tidy --target autogen >/dev/null
printf '%s\n' "${files[@]}" | grep '\.cpp$' |
    xargs -P "$(nproc)" -n 4 clang-tidy -p build/tidy --quiet
