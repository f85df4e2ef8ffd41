# Making the packages of a release out of the finished win64 build.

PACKAGES=$BUILD/packages

# The one that CMake read from CMakeLists.txt.
program_version() { sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$BUILD/win64/CMakeCache.txt"; }

# The time that packed files carry: of the last commit, so that packing a commit again gives the same bytes.
# Without git's history it is one fixed day.
source_date() { git log -1 --format=%ct 2>/dev/null || date --utc --date=2026-01-01 +%s; }

# make_packages [SIGN]: a command that signs the file whose path is appended to it
make_packages() {
    rm -rf "$PACKAGES"
    SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(source_date)} logged packages \
        "$ROOT/tools/packaging/make-packages" "$BUILD/win64" "$(program_version)" "$PACKAGES" ${1:+"$1"}
}
