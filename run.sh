#!/bin/bash
# Builds Quarn and shows it at work on an emulated game network.

source "$(dirname "${BASH_SOURCE[0]}")/tools/scripts/common.sh"
source "$SCRIPTS/packages.sh"
source "$SCRIPTS/build.sh"
source "$SCRIPTS/wine.sh"
source "$SCRIPTS/display.sh"

print_help() {
    cat <<'HELP'
Usage: ./run.sh [--real] [--seconds N] [--help]

Builds Quarn.exe and starts it under Wine, in a fresh folder build/demo/Quarn, with an emulated network of
60 game servers on this machine's loopback addresses. Missing Debian packages are installed first, as root
or through sudo.

The list of every game is fetched and scanned, first with the servers asked one after the other, then with 32
asked at once; both times are printed, and the lists as tables. On a usable display ($DISPLAY) the window
is then yours, until you close it. Without one Quarn runs unseen, and a picture of the window goes to
build/demo/quarn.png.

  --real        also starts three real game servers with bots (Debian's openarena-server; a download of
                400 MB the first time) and lists them under OpenArena
  --seconds N   closes the window after N seconds; unseen, keeps it open for N seconds after the tables
  --help        this text
HELP
}

demonstration=(/usr/bin/python3 -B "$ROOT/tools/demonstration/demonstrate.py")
real=false
while (($# > 0)); do
    case $1 in
        --real) real=true ;;
        --seconds)
            [[ ${2:-} =~ ^[0-9]+$ ]] || fail "--seconds needs a whole number"
            demonstration+=(--seconds "$2")
            shift
            ;;
        --help) print_help && exit ;;
        *) fail "unknown option $1; see ./run.sh --help" ;;
    esac
    shift
done

take_build_folder
ensure_packages "${PACKAGES_TO_BUILD_NATIVE[@]}" "${PACKAGES_TO_BUILD_PROGRAM[@]}" "${PACKAGES_TO_RUN[@]}"
if $real; then
    ensure_packages "${PACKAGES_OF_REAL_SERVERS[@]}"
    demonstration+=(--real)
fi
build_preset native gamenet
build_preset win64 Quarn uidrive

if display_is_usable; then
    say "Showing Quarn on display $DISPLAY; close its window to end"
    demonstration+=(--watched)
else
    say "No display to use: Quarn runs unseen"
    start_display
fi
start_wine
"${demonstration[@]}"
