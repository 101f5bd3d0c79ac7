# shellcheck shell=bash disable=SC2034 # "root" is for the callers
# What the tests under Wine share; sourced from the project's folder.
root=$PWD
wine=/usr/lib/wine/wine64
server=/usr/lib/wine/wineserver64 # of the Wine of WINEPREFIX alone

# A Wine of its own, in the folder $1: no look for add-ons, names of files in UTF-8.
use_wine() {
    export WINEPREFIX=$1 WINEDEBUG=-all LC_ALL=C.UTF-8
    export WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='
    trap 'exit 1' TERM INT # else the end by a signal would count as good
    unset MORLIK_FOLDER
    [ -e "$wine" ] || fail "$wine is missing"
    mkdir -p "$WINEPREFIX"
}

fail() {
    echo "$*" >&2
    exit 1
}

# Ends Wine, then the script with its closing words: $2 where its status $1 was good, else $3.
finish() {
    [ ! -e "$server" ] || "$server" -k || true
    if [ "$1" -eq 0 ]; then
        echo "$2"
    else
        echo "$3"
        exit 1
    fi
}
