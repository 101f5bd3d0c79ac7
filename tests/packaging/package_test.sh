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
        cmake --preset package &&
            cmake --build --preset package --target morlik_packages morlik-samples &&
            rm -rf "$build/packages" &&
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
    cp -rL "$portable" "$work/copied" # as onto a disk that has no links
}

check_trees() {
    cmake --install "$build" --prefix "$work/prefix" >/dev/null
    local other
    for other in "$portable" "$tree"; do
        diff <(cd "$work/prefix" && find . ! -type d | sort) \
            <(cd "$other" && find . ! -type d ! -path ./share/doc/morlik/changelog.gz \
                ! -path ./README.txt ! -path ./LICENSE | sort) >&2 ||
            fail "Other files in $other than from cmake --install"
    done
    [[ -s $portable/README.txt && -s $portable/LICENSE ]] || fail "No README and LICENSE in $tarball"
    dpkg-deb -c "$deb" | awk '$2 != "root/root" || $1 !~ /^(lrwxrwxrwx|[d-]rw[x-]r-[x-]r-[x-])$/ {
        print "Wrong owner or rights: " $0; bad = 1 } END { exit bad }' >&2
    local version
    version=$(dpkg-deb -f "$deb" Version)
    [[ $version == "$("$tree/bin/morlik-cli" --version | sed 's/^[^0-9]*//')".* ]] ||
        fail "The package is $version, the program is not"
    grep -q "^## \[$version\]" "$tree/share/doc/morlik/CHANGELOG.md" ||
        fail "The changelog does not tell of $version"
    [[ $(dpkg-deb -f "$deb" Depends) == *libpng16-16*libqt6widgets6*libsdl2-2.0-0*libwebp7* ]] ||
        fail "The .deb lacks dependencies"
    if have lintian; then
        lintian --allow-root --fail-on error,warning "$deb" >&2 || fail "lintian finds faults"
    fi
}

# No code of the programs can be written to, and none stands where a fault could expect it.
check_hardening() {
    local program facts
    for program in "$tree" "$portable"; do
        for program in "$program"/lib/morlik/morlik{,-cli}; do
            facts=$(readelf -dhlW "$program")
            [[ $facts == *DYN*GNU_RELRO*NOW* ]] || fail "$program is not hardened"
            [[ $facts != *R*NEEDED*libdeflate* || $program == "$tree"* ]] ||
                fail "$program takes libraries that few systems have"
        done
    done
}

convert_levels() {
    local path level
    "$build/bin/morlik-samples" "$work/levels" >/dev/null
    for path in "$work"/levels/tr*; do
        level=${path##*/}
        mkdir -p "$work/wanted/$level"
        "$build/bin/morlik-cli" convert "$path" -o "$work/wanted/$level/out.was" >/dev/null 2>&1
        converts set "$tree/bin/morlik-cli" convert "$path" -o "$work/set/out.was"
        converts set "$work/copied/bin/morlik-cli" convert "$path" -o "$work/set/out.was"
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
    for size in 16 22 24 32 48 64 128 256; do
        [[ $(file -L "$tree/share/icons/hicolor/${size}x$size/apps/$name.png") == \
            *"PNG image data, $size x $size,"* ]] || fail "No icon of $size pixels"
    done
    if have desktop-file-validate; then desktop-file-validate "$entry" || fail "Bad $entry"; fi
    if have appstreamcli; then
        appstreamcli validate --no-net "$tree/share/metainfo/morlik.metainfo.xml" \
            >"$work/messages" || { cat "$work/messages" >&2; fail "Bad metainfo"; }
    fi
}

# What a desktop makes of a click on a level, under its own name or another, and on a list.
check_clicks() {
    local wanted file program share=$work/share
    local -x XDG_DATA_DIRS=$share PATH=$tree/bin:$PATH
    have update-mime-database && have update-desktop-database && have gio || return 0
    mkdir "$share"
    cp -r "$tree"/share/{mime,applications} "$share"
    chmod -R u+w "$share"
    update-mime-database "$share/mime"
    update-desktop-database "$share/applications"
    cp "$work/levels/tr3.tr2" "$work/levels/tr5.trc" "$work/levels/tr1gold.tub" "$work/files"
    cp "$work/levels/tr4.tr4" "$work/files/a copy"
    cp "$work/levels/tr1.phd" "$work/files/another"
    cp "$work/levels/tr1.phd" "$work/files/OLD.PHD"
    cp "$work/levels/tr4.tr4" "$work/files/my level.TR4"
    cp "$work/wanted/tr1.phd/out.was" "$work/files"
    cp "$work/wanted/tr5.trc/out.was" "$work/files/a list"
    while IFS='|' read -r file wanted; do
        [[ $(gio info -a standard::content-type "$work/files/$file") == \
            *": $wanted" ]] || fail "'$file' is not taken for $wanted"
    done <<'FILES'
tr3.tr2|application/x-tomb-raider-level
tr5.trc|application/x-tomb-raider-level
tr1gold.tub|application/x-tomb-raider-level
OLD.PHD|application/x-tomb-raider-level
my level.TR4|application/x-tomb-raider-level
a copy|application/x-tomb-raider-level
another|application/x-tomb-raider-level
out.was|text/x-tomb-raider-object-list
a list|text/x-tomb-raider-object-list
FILES
    [[ $(gio mime application/x-tomb-raider-level) == *morlik.desktop* ]] ||
        fail "No program opens a level"

    # The line of the desktop file, with a level in the place of %f.
    rm -f "$XDG_STATE_HOME/morlik/MORLIK.log"
    program=$(sed -n 's/^Exec=\([^ ]*\) %f$/\1/p' "$share/applications/morlik.desktop")
    as_user sh -c 'echo $$ && exec "$@"' sh "$program" "$work/files/tr5.trc" >"$work/messages" 2>&1 &
    for _ in {1..300}; do
        ! grep -qF "$work/files/tr5.trc" "$XDG_STATE_HOME/morlik/MORLIK.log" 2>/dev/null || break
        sleep 0.1
    done
    kill "$(head -n 1 "$work/messages")" || fail "The program ended by itself"
    wait $! || true
    grep -qF "$work/files/tr5.trc" "$XDG_STATE_HOME/morlik/MORLIK.log" ||
        fail "The program doesn't open a level"
}

# What bash, and fish, offer behind a line, parted by commas.
bash_offers() {
    bash --norc -c '
        source "$1"
        complete -p morlik-cli >/dev/null
        read -ra COMP_WORDS <<<"$2"
        [[ $2 != *" " ]] || COMP_WORDS+=("")
        COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
        _morlik_cli; printf "%s\n" "${COMPREPLY[@]}" | sort | paste -sd,
        ' bash "$tree/share/bash-completion/completions/morlik-cli" "$1" 2>&1 || true
}
fish_offers() {
    fish --no-config -c '
        source $argv[1]
        complete -C $argv[2] | string split -f 1 \t | string trim -r -c / | sort | string join ,
        ' "$tree/share/fish/vendor_completions.d/morlik-cli.fish" "$1" 2>&1 || true
}

# Every command, and every option that it tells of, stands in the man page and in the completions.
check_options() {
    local command option page offered cli=$tree/bin/morlik-cli fish= commands
    local zsh=$tree/share/zsh/vendor-completions/_morlik-cli
    ! have fish || fish=yes
    page=$(zcat "$tree/share/man/man1/morlik-cli.1.gz" | tr -d '\\')
    commands=$("$cli" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p')
    [[ $commands == *gallery* ]] || fail "morlik-cli --help tells of no commands"
    for command in $commands; do
        [[ $page == *".BI $command~ "* ]] || fail "The man page lacks $command"
        [[ ,$(bash_offers 'morlik-cli '), == *,"$command",* ]] || fail "Bash lacks $command"
        [[ ! $fish || ,$(fish_offers 'morlik-cli '), == *,"$command",* ]] || fail "Fish lacks $command"
        grep -qF "'$command:" "$zsh" || fail "The completion for zsh lacks $command"
        for option in $("$cli" "$command" --help | grep -oE '^ +-[^ ]+' | sed 's/.*,//'); do
            [[ $page == *"$option"* ]] || fail "The man page lacks $option"
            offered=$(bash_offers "morlik-cli $command -")
            [[ ,$offered, == *,"$option",* ]] || fail "Bash lacks $option of $command"
            [[ ! $fish || ,$(fish_offers "morlik-cli $command -"), == *,"$option",* ]] ||
                fail "Fish lacks $option of $command"
            grep -qe "[\"',{)]$option[[}]" "$zsh" || fail "The completion for zsh lacks $option"
        done
    done
}

# What they offer behind each line, in a folder with these files.
check_completion() {
    local line wanted offered
    ! have zsh || zsh -n "$tree/share/zsh/vendor-completions/_morlik-cli" ||
        fail "The completion for zsh is no script"
    mkdir -p "$work/files/old levels"
    touch "$work/files"/{'my level.TR4',a.phd,b.was,main.sfx,c.prj,d.png,notes.md}
    while IFS='|' read -r line wanted; do
        offered=$(cd "$work/files" && bash_offers "$line")
        [ "$offered" = "$wanted" ] || fail "Behind '$line' bash offers '$offered', not '$wanted'"
        # Fish reads a line by its own rules: quotes and the sign of folders differ.
        [[ $line != *\"* ]] && command -v fish >/dev/null || continue
        offered=$(cd "$work/files" && fish_offers "$line")
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
morlik-cli sheet a.phd |d.png,old levels
morlik-cli find --same-as |a.phd,b.was,my level.TR4,old levels
morlik-cli find --s|--same-as,--sound
LINES
}

make_packages
leave_home
unpack
check_trees
check_hardening
convert_levels
check_logs
check_desktop
check_options
check_completion
check_clicks
