#!/usr/bin/env bash
# Lint: every tracked C++ file must be formatted as .clang-format says, and the C++ files changed
# against a base commit must pass the checks of .clang-tidy. clang-tidy reads the compile database
# of build/test, so run this after that tree is configured and built (scripts/test.sh does).
#   QELPRN_LINT_BASE=<commit>  the base to compare with (default HEAD~1)
#   QELPRN_LINT_ALL=1          clang-tidy on every .cpp file (slow: several seconds a file)
#   QELPRN_LINT_BUILD=<dir>    another build tree's compile database
set -euo pipefail
cd "$(dirname "$0")/.."
build=${QELPRN_LINT_BUILD:-build/test}

mapfile -d '' sources < <(git -c core.quotepath=off ls-files -z -- '*.cpp' '*.h')
echo "== clang-format: ${#sources[@]} files =="
clang-format --dry-run -Werror "${sources[@]}"

if [[ ${QELPRN_LINT_ALL:-0} == 1 ]]; then
    mapfile -d '' changed < <(git ls-files -z -- '*.cpp' '*.h')
else
    base=${QELPRN_LINT_BASE:-HEAD~1}
    if ! git rev-parse -q --verify "$base^{commit}" >/dev/null; then
        echo "lint: base $base not in this checkout (a shallow clone?); clang-tidy skipped" >&2
        exit 0
    fi
    mapfile -d '' changed < <(git diff -z --name-only --diff-filter=ACMR "$base" -- '*.cpp' '*.h')
fi

# A changed header is checked through its own .cpp; only files the build compiles can be checked
# (the Windows-only and fuzzing sources are not in this build's database).
db="$build/compile_commands.json"
if [[ ! -f $db ]]; then
    echo "lint: $db missing; configure and build $build first" >&2
    exit 1
fi
declare -A seen=()
files=()
for f in "${changed[@]}"; do
    f=${f%.h}
    f=${f%.cpp}.cpp
    [[ -f $f && -z ${seen[$f]:-} ]] || continue
    seen[$f]=1
    if grep -qF "\"file\": \"$PWD/$f\"" "$db"; then files+=("$f"); fi
done
echo "== clang-tidy: ${#files[@]} files =="
((${#files[@]} == 0)) && exit 0
start=$SECONDS
printf '%s\0' "${files[@]}" |
    xargs -0 -n 1 -P "$(nproc)" clang-tidy -p "$build" --quiet \
        2> >(grep -vE '^[0-9]+ warnings? (and [0-9]+ errors? )?generated\.$' >&2)
echo "clang-tidy: $((SECONDS - start)) s for ${#files[@]} files"
