#!/bin/bash
# Builds Quarn and makes the packages that it is handed out as.

source "$(dirname "${BASH_SOURCE[0]}")/tools/scripts/common.sh"
source "$SCRIPTS/packages.sh"
source "$SCRIPTS/build.sh"
source "$SCRIPTS/package.sh"

print_help() {
    cat <<'HELP'
Usage: ./package.sh [--sign COMMAND] [--verify] [--help]

Builds Quarn and makes, in build/packages/:

  Quarn-VERSION.zip         runs from any folder that it is unpacked into
  Quarn-VERSION-setup.exe   installs for one user, without administrator rights

Missing Debian packages are installed first, as root or through sudo.

  --sign COMMAND   signs the program, the uninstaller and the installer: COMMAND is called by a shell with the
                   path of each, and signs that file in place
  --verify         builds and packs a second time, in another folder and without any cache, and compares: the
                   same source must give the same bytes. Not with --sign, as signatures hold their time
  --help           this text
HELP
}

# Compares the packages with those of a copy of the sources that is built from nothing.
verify_packages() {
    local copy difference
    copy=$(mktemp -d)
    at_exit rm -rf "$copy"
    say "Building a second time, in $copy"
    git ls-files -z --cached --others --exclude-standard | xargs -0 cp --parents --target-directory="$copy"
    cp -r "$BUILD/debian" "$copy/build/" 2>/dev/null || true
    logged verify env CCACHE_DISABLE=1 SOURCE_DATE_EPOCH="$(source_date)" "$copy/package.sh" || return
    difference=$(diff --recursive --brief "$PACKAGES" "$copy/build/packages") ||
        fail "the second build differs: $difference"
    say "The second build gave the same bytes"
}

verify=false
sign=
while (($# > 0)); do
    case $1 in
        --verify) verify=true ;;
        --sign)
            [[ ${2-} ]] || fail "--sign needs a command; see ./package.sh --help"
            sign=$2
            shift
            ;;
        --help) print_help && exit ;;
        *) fail "unknown option $1; see ./package.sh --help" ;;
    esac
    shift
done

! { $verify && [[ $sign ]]; } || fail "--verify compares packages without signatures: leave out --sign"

take_build_folder
ensure_packages "${PACKAGES_TO_BUILD_NATIVE[@]}" "${PACKAGES_TO_BUILD_PROGRAM[@]}" "${PACKAGES_TO_PACK[@]}"
build_preset win64 Quarn
say "Packing"
make_packages "$sign"
(cd "$PACKAGES" && du --apparent-size -h -- * && sha256sum -- *)
! $verify || verify_packages
