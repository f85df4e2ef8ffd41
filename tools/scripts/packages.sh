# The Debian packages that each job needs. Only what is missing is installed.
# shellcheck disable=SC2034  # used by the scripts that source this

PACKAGES_TO_BUILD_NATIVE=(g++ cmake ninja-build googletest)
PACKAGES_TO_BUILD_PROGRAM=(
    g++-mingw-w64-x86-64-posix librsvg2-bin icoutils imagemagick famfamfam-flag-png
)
PACKAGES_TO_PACK=(nsis zip)
PACKAGES_TO_RUN=(wine wine64 xvfb openbox x11-utils imagemagick python3)
PACKAGES_OF_CLANG=(clang libclang-rt-dev)
PACKAGES_TO_TEST=(python3-pytest)
PACKAGES_TO_COMPARE=(qstat)
PACKAGES_TO_TEST_EVERYTHING=(
    "${PACKAGES_OF_CLANG[@]}" "${PACKAGES_TO_COMPARE[@]}" libbenchmark-dev g++-mingw-w64-i686-posix
)
PACKAGES_OF_STYLE=(git clang-format-14 clang-tidy-14 cppcheck shellcheck black python3-flake8 libbenchmark-dev)
PACKAGES_OF_REAL_SERVERS=(openarena-server)

missing_packages() {
    local package
    for package in "$@"; do
        [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || echo "$package"
    done
}

as_root() {
    if ((EUID == 0)); then
        "$@"
    else
        sudo "$@"
    fi
}

# ensure_packages PACKAGE...: installs those that are not there, as root or through sudo.
ensure_packages() {
    local missing
    command -v dpkg-query >/dev/null || fail "this needs a Debian system: dpkg-query is missing"
    mapfile -t missing < <(missing_packages "$@")
    ((${#missing[@]} > 0)) || return 0
    ((EUID == 0)) || command -v sudo >/dev/null ||
        fail "these packages are missing, and neither root nor sudo is here to install them: ${missing[*]}"

    say "Installing ${missing[*]}"
    logged packages-update as_root apt-get update || exit 1
    logged packages-install as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends "${missing[@]}" || exit 1
}

# The address ranges of the country database. Their package is unpacked, not installed: it would bring a
# network service along, and start it.
ensure_geoip_ranges() {
    local folder=$BUILD/debian
    [[ -e /usr/share/tor/geoip || -e $folder/tor-geoipdb/usr/share/tor/geoip ]] && return
    say "Fetching the address ranges of tor-geoipdb"
    mkdir -p "$folder"
    if ! apt-cache show tor-geoipdb >/dev/null 2>&1; then
        logged packages-update as_root apt-get update || exit 1
    fi
    (cd "$folder" && logged packages-geoip apt-get -o APT::Sandbox::User=root download tor-geoipdb) || exit 1
    dpkg-deb -x "$folder"/tor-geoipdb_*.deb "$folder/tor-geoipdb"
    rm "$folder"/tor-geoipdb_*.deb
}
