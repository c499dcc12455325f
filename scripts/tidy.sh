#!/usr/bin/env bash
# usage: scripts/tidy.sh BUILD_DIR: clang-tidy on the C++ files changed since the main branch; on the main branch itself,
# on those of the newest commits (TIDY_FILES of them at most).
set -euo pipefail
directory=$1
limit=${TIDY_FILES:-12}

changed_files() {
    git diff --name-only HEAD
    git ls-files -o --exclude-standard
    local base
    base=$(git merge-base HEAD origin/main 2>/dev/null || git merge-base HEAD main 2>/dev/null || true)
    if [ -n "$base" ] && [ "$base" != "$(git rev-parse HEAD)" ]; then
        git diff --name-only "$base" HEAD
    else
        git log --format= --name-only -n 40
    fi
}

mapfile -t files < <(changed_files | awk '/\.cpp$/ && !seen[$0]++' | while read -r file; do
    if [ -f "$file" ] && grep -qF "/$file\"" "$directory/compile_commands.json"; then echo "$file"; fi
done | head -n "$limit")
[ ${#files[@]} -gt 0 ] || { echo "clang-tidy: no file changed"; exit 0; }
echo "clang-tidy on ${#files[@]} files"
# Its compiler cannot read the headers that GCC precompiled.
mkdir -p "$directory/tidy"
sed -E 's/ -include [^ "]*cmake_pch\.hxx//; s/ -fpch-preprocess//; s/ -Winvalid-pch//' "$directory/compile_commands.json" >"$directory/tidy/compile_commands.json"
printf '%s\n' "${files[@]}" | xargs -P "$(nproc)" -n 1 nice clang-tidy -p "$directory/tidy" --quiet --warnings-as-errors='*' 2>/dev/null
