# Several desktops at once, each with a display and a Wine prefix of its own, for tests that need the focus, the
# clipboard, or to run the only instance of a program.

# start_desktops: starts as many as tests/desktops.json tells CTest, and puts them into QUARN_DESKTOPS, a line
# each: the display, a blank, the prefix. The first one has the usual prefix, the others begin as copies of it.
# Afterwards what is started without another choice appears on the first.
start_desktops() {
    local number count prefixes=("$WINEPREFIX")
    count=$(grep -c '"id"' "$ROOT/tests/desktops.json")
    make_wine_prefix
    for ((number = 2; number <= count; number++)); do
        copy_prefix "$WINEPREFIX" "$WINEPREFIX-$number"
        prefixes+=("$WINEPREFIX-$number")
    done
    QUARN_DESKTOPS=
    for WINEPREFIX in "${prefixes[@]}"; do
        start_display
        start_wine
        QUARN_DESKTOPS+="$DISPLAY $WINEPREFIX"$'\n'
    done
    export QUARN_DESKTOPS
    read -r DISPLAY WINEPREFIX <<<"$QUARN_DESKTOPS"
}

# copy_prefix FROM TO: the copy shares the files, but not the registry, which is written in place. An interrupted
# copy keeps its .part name.
copy_prefix() {
    [[ -e $2 ]] && return
    rm -rf "$2.part"
    cp -al "$1" "$2.part"
    cp -a --remove-destination "$1"/*.reg "$2.part/"
    mv "$2.part" "$2"
}
