#!/usr/bin/env bash
# Makes both packages, unpacks them as a user would and converts sample levels with what they hold:
# each set must be, byte for byte, that of the programs in the build tree.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/../.."
build=$PWD/build/package
work=$(mktemp -d)
chmod 755 "$work"
converted=0 skipped=

finish() {
    local status=$?
    chmod -R u+w "$work"
    rm -rf "$work"
    if [ "$status" -eq 0 ]; then
        echo "Packages good: $converted conversions are those of the build tree$skipped"
    else
        echo "Packages NOT good"
        exit 1
    fi
}
trap finish EXIT

fail() {
    echo "$*" >&2
    exit 1
}

# Whether a checker is there; the closing line names those that are not.
have() { command -v "$1" >/dev/null || { skipped+=", $1 is missing"; return 1; }; }

# Runs a command as a user who may not write to the package's files: nothing stops root.
as_user() {
    if [ "$(id -u)" -eq 0 ]; then
        setpriv --reuid=65534 --regid=65534 --clear-groups "$@"
    else
        "$@"
    fi
}

# converts FOLDER COMMAND...: runs the command, whose set in FOLDER must be the one of the level.
converts() {
    local set="$work/$1"
    mkdir -m 777 "$set"
    as_user "${@:2}" >"$work/messages" 2>&1 || { cat "$work/messages" >&2; fail "Failed: ${*:2}"; }
    diff -r "$work/wanted/$level" "$set" >&2 || fail "Another set: ${*:2}"
    rm -r "$set"
    converted=$((converted + 1))
}

make_packages() {
    mkdir -p "$build" # for the log: nothing is there yet in a fresh clone
    umask 022 # the folders of the packages take their rights from it
    {
        cmake --preset package
        cmake --build --preset package --target morlik_package morlik-samples morlik-cli
        rm -rf "$build/packages"
        cpack --config "$build/CPackConfig.cmake"
    } >"$build/package.log" 2>&1 || { tail -n 40 "$build/package.log" >&2; fail "No packages"; }
    deb=$(echo "$build"/packages/*.deb)
    tarball=$(echo "$build"/packages/*.tar.gz)
    ls -sh "$deb" "$tarball"
}

# From here on no display, and no settings or data files but those of the packages. The build had
# the user's own folder, where a cache of the compiler may stand.
leave_home() {
    export HOME=$work/home XDG_STATE_HOME=$work/home/state
    export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
    unset DISPLAY WAYLAND_DISPLAY MORLIK_FOLDER XDG_CONFIG_HOME XDG_CONFIG_DIRS
    mkdir -m 777 "$HOME"
}

unpack() {
    tree=$work/root/usr
    portable="$work/zamek łódź"
    mkdir -p "$portable"
    dpkg-deb -x "$deb" "$work/root"
    chmod -R a-w "$tree"
    tar -xzf "$tarball" -C "$portable"
    portable=$(echo "$portable"/morlik-*-linux-*)
    [ -d "$portable" ] || fail "Not one folder at the top of $tarball"
    [ "$(id -u)" -ne 0 ] || chown -R 65534 "$portable"
    ln -s "$portable/bin/morlik-cli" "$work/linked-cli"
}

check_trees() {
    cmake --install "$build" --prefix "$work/prefix" >/dev/null
    local list other
    list=$(cd "$tree" && find . ! -type d | sort)
    for other in "$portable" "$work/prefix"; do
        diff <(echo "$list") <(cd "$other" && find . ! -type d | sort) >&2 ||
            fail "Other files in $other than in the .deb"
    done
    dpkg-deb -c "$deb" | awk '$2 != "root/root" || $1 !~ /^(lrwxrwxrwx|[d-]rw[x-]r-[x-]r-[x-])$/ {
        print "Wrong owner or rights: " $0; bad = 1 } END { exit bad }' >&2
    local version
    version=$(dpkg-deb -f "$deb" Version)
    [[ $version == "$("$tree/bin/morlik-cli" --version | sed 's/^[^0-9]*//')".* ]] ||
        fail "The package is $version, the program is not"
    grep -q "^## \[$version\]" "$tree/share/doc/morlik/CHANGELOG.md" ||
        fail "The changelog does not tell of $version"
    [[ $(dpkg-deb -f "$deb" Depends) == *libqt6widgets6*libsdl2-2.0-0* ]] || fail "The .deb lacks dependencies"
}

convert_levels() {
    local path level
    "$build/bin/morlik-samples" "$work/levels" >/dev/null
    for path in "$work"/levels/tr*; do
        level=${path##*/}
        mkdir -p "$work/wanted/$level"
        "$build/bin/morlik-cli" convert "$path" -o "$work/wanted/$level/out.was" >/dev/null 2>&1
        converts set "$tree/bin/morlik-cli" convert "$path" -o "$work/set/out.was"
        converts set "$work/linked-cli" convert "$path" -o "$work/set/out.was"
        converts "my séts" "$tree/bin/morlik" /makewas "$path" /export "$work/my séts/out.was"
        converts "my séts" "$portable/bin/morlik" /makewas "$path" /export "$work/my séts/out.was"
    done
}

check_logs() {
    [ -s "$XDG_STATE_HOME/morlik/MORLIK.log" ] || fail "No log in the state folder"
    [ -s "$portable/lib/morlik/MORLIK.log" ] || fail "No log beside the program of the tarball"
}

check_desktop() {
    local page entry=$tree/share/applications/morlik.desktop name
    for page in "$tree"/share/man/man1/*.1.gz; do
        if have man; then
            [ -z "$(man --warnings -l "$page" 2>&1 >/dev/null)" ] || fail "Warnings about $page"
        elif have groff; then
            [ -z "$(zcat "$page" | groff -man -ww -Tutf8 2>&1 >/dev/null)" ] ||
                fail "Warnings about $page"
        fi
    done
    name=$(sed -n 's/^Exec=\([^ ]*\).*/\1/p' "$entry")
    [ -x "$tree/bin/$name" ] || fail "$entry starts $name, which is not there"
    name=$(sed -n 's/^Icon=//p' "$entry")
    [ -s "$tree/share/icons/hicolor/scalable/apps/$name.svg" ] || fail "No icon $name"
    if have desktop-file-validate; then desktop-file-validate "$entry" || fail "Bad $entry"; fi
}

# Every option that the program tells of stands in its man page and in the completion.
check_options() {
    local command option page
    page=$(zcat "$tree/share/man/man1/morlik-cli.1.gz" | tr -d '\\')
    for command in convert info sheet sounds picture animate contact gltf check find; do
        for option in $("$tree/bin/morlik-cli" "$command" --help | grep -oE '^ +-[^ ]+' |
            tr , '\n' | grep -oE -- '--[a-z-]+'); do
            [[ $page == *"$option"* ]] || fail "The man page lacks $option"
            grep -qe " $option\b" "$tree/share/bash-completion/completions/morlik-cli" ||
                fail "The completion for bash lacks $option"
            grep -qe " ${option#-}\b" -e "-l ${option#--}\b" \
                "$tree/share/fish/vendor_completions.d/morlik-cli.fish" ||
                fail "The completion for fish lacks $option"
            grep -qe "[\"',{)]$option[[}]" "$tree/share/zsh/vendor-completions/_morlik-cli" ||
                fail "The completion for zsh lacks $option"
        done
    done
}

# What bash offers behind each line, in a folder with these files.
check_completion() {
    local line wanted offered fish=
    ! have fish || fish=yes
    ! have zsh || zsh -n "$tree/share/zsh/vendor-completions/_morlik-cli" ||
        fail "The completion for zsh is no script"
    mkdir -p "$work/files/old levels"
    touch "$work/files"/{'my level.TR4',a.phd,b.was,main.sfx,c.prj,notes.md}
    while IFS='|' read -r line wanted; do
        offered=$(cd "$work/files" && bash --norc -c '
            source "$1"
            complete -p morlik-cli >/dev/null
            read -ra COMP_WORDS <<<"$2"
            [[ $2 != *" " ]] || COMP_WORDS+=("")
            COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
            _morlik_cli; printf "%s\n" "${COMPREPLY[@]}" | sort | paste -sd,
            ' bash "$tree/share/bash-completion/completions/morlik-cli" "$line" 2>&1) || true
        [ "$offered" = "$wanted" ] || fail "Behind '$line' bash offers '$offered', not '$wanted'"
        # Fish reads a line by its own rules: quotes and the sign of folders differ.
        [[ $fish && $line != *\"* ]] || continue
        offered=$(cd "$work/files" && fish --no-config -c '
            source $argv[1]
            complete -C $argv[2] | string split -f 1 \t | string trim -r -c / | sort | string join ,
            ' "$tree/share/fish/vendor_completions.d/morlik-cli.fish" "$line" 2>&1) || true
        [ "$offered" = "$wanted" ] || fail "Behind '$line' fish offers '$offered', not '$wanted'"
    done <<'LINES'
morlik-cli c|check,contact,convert
morlik-cli convert |a.phd,my level.TR4,old levels
morlik-cli convert "my|my level.TR4
morlik-cli convert a.phd --ma|--main-sfx
morlik-cli convert --main-sfx |auto,main.sfx,old levels
morlik-cli convert -d |old levels
morlik-cli info |a.phd,c.prj,main.sfx,my level.TR4,old levels
morlik-cli check |b.was,old levels
morlik-cli find --same-as |a.phd,b.was,my level.TR4,old levels
morlik-cli find --s|--same-as,--sound
LINES
}

make_packages
leave_home
unpack
check_trees
convert_levels
check_logs
check_desktop
check_options
check_completion
