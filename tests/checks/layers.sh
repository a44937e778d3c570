#!/usr/bin/env bash
# The rules of the house that a compiler cannot see: layers.sh SOURCE_ROOT
set -uo pipefail
cd "$1/src" || exit 2
failed=0

# forbid MESSAGE PATTERN FOLDER…: no line of the folders may match.
forbid() {
    local message=$1 pattern=$2 found
    shift 2
    found=$(grep -rnE "$pattern" --include='*.cpp' --include='*.h' "$@")
    if [ -n "$found" ]; then
        printf '%s:\n%s\n' "$message" "$found"
        failed=1
    fi
}

# may_include FOLDER LAYER…: our own headers come from these folders only.
may_include() {
    local folder=$1 allowed found
    [ -d "$folder" ] || return 0
    allowed=$(IFS='|'; echo "$*")
    found=$(grep -rnE '^#include "' "$folder" | grep -vE "#include \"($allowed)/")
    if [ -n "$found" ]; then
        printf '%s may include only %s:\n%s\n' "$folder" "$allowed" "$found"
        failed=1
    fi
}

may_include core
may_include db core
may_include services db core
may_include theme core
may_include widgets theme core
may_include dialogs widgets theme services db core
may_include selfcheck services db core
may_include pages dialogs widgets theme selfcheck services db core
may_include app selfcheck pages dialogs widgets theme services db core

# Folders, those within a layer too, depend on each other in one direction only.
if ! circles=$(grep -rE '^#include "[^"]*/' --include='*.cpp' --include='*.h' . |
    sed -E 's|^\./(.*)/[^/]*:#include "(.*)/[^/]*"$|\1 \2|' | sort -u | awk '$1 != $2' |
    tsort 2>&1 >/dev/null); then
    printf 'folders include each other in a circle:\n%s\n' "$circles"
    failed=1
fi

for folder in *; do
    case " core db services theme widgets dialogs pages selfcheck app " in
    *" $folder "*) ;;
    *) [ ! -d "$folder" ] || { echo "unknown layer: $folder"; failed=1; } ;;
    esac
done

forbid "message boxes belong to the windows" 'QMessageBox|QDialog' core db
forbid "message boxes are built by MessageBox" 'QMessageBox' theme widgets dialogs pages app
forbid "nothing is sent anywhere" \
    'Q(Tcp|Udp|Local|Abstract|Ssl)(Socket|Server)|QNetwork|QHttp|QWebSocket|QDBus|https?://' .
forbid "nothing is sent anywhere" '<(sys/socket|netinet/|arpa/|netdb|curl/)' .
forbid "settings live in the profile row" 'QSettings' core db services theme widgets dialogs pages

settings=$(grep -rnE 'QSettings' --include='*.cpp' --include='*.h' . |
    grep -vE ':#include <QSettings>$|: +QSettings::setPath\(')
[ -z "$settings" ] || { printf 'QSettings may only be redirected:\n%s\n' "$settings"; failed=1; }

forbid "signals are connected by member pointers" '\b(SIGNAL|SLOT)\(' .
exit $failed
