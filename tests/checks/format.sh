#!/usr/bin/env bash
# Every source file is formatted as .clang-format says: format.sh CLANG_FORMAT SOURCE_ROOT
set -euo pipefail

folders=()
for folder in src tests demo bench fuzz; do
    [ -d "$2/$folder" ] && folders+=("$2/$folder")
done
find "${folders[@]}" \( -name '*.cpp' -o -name '*.h' \) -print0 |
    xargs -0 -n 16 -P 2 "$1" --dry-run --Werror --style=file
