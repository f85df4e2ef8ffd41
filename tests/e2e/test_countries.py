"""Countries and flags of addresses, from the range file that comes with the program. Nothing is sent to them."""

import bisect
import ipaddress

from harness.places import PROGRAM_FOLDER
from harness.quarn import write_settings

ADDRESSES = (
    "8.8.8.8 77.88.8.8 202.12.27.33 192.36.148.17 193.0.6.139 80.150.6.143 212.27.40.240 212.58.244.20 "
    "200.160.0.8 168.126.63.1 151.1.1.1 139.130.4.5 62.2.24.162 195.3.96.67 10.0.0.1 255.255.255.255"
).split()
COUNTRIES = "US RU JP SE NL DE FR GB BR KR IT AU CH AT -- --".split()


def countries_in_file():
    """Of each address, by a search of the ranges that do not overlap."""
    lines = (PROGRAM_FOLDER / "countryip.dat").read_text("ascii").splitlines()
    ranges = [line.split(";") for line in lines[1:]]
    starts = [int(start) for start, _, _ in ranges]

    def country_of(address):
        number = int(ipaddress.ip_address(address))
        _, end, country = ranges[bisect.bisect_right(starts, number) - 1]
        return country if number <= int(end) else "--"

    return [country_of(address) for address in ADDRESSES]


def flags(quarn):
    return [int(flag) for _, flag in quarn.do.table("images", quarn.control("lvwServers"))]


def test_rechecked_countries_show_with_their_flags(folder, start):
    assert countries_in_file() == COUNTRIES
    place = folder()
    lines = [f" {len(ADDRESSES)}"] + [f"{address};1;--;;0;0;0;;;0;;;" for address in ADDRESSES]
    (place / "servers-q3.dat").write_bytes("".join(f"{line}\r\n" for line in lines).encode())
    write_settings(place, 1)
    quarn = start(place)
    quarn.wait_until_usable()
    quarn.wait_for_rows(len(ADDRESSES))
    assert {row.location for row in quarn.rows()} == {"--"}
    assert set(flags(quarn)) == {-2}  # I_IMAGENONE

    quarn.choose("mnuRecheckCountries")
    # The cells follow at the next listing.
    quarn.click_tree("Filters", "Open servers only")
    quarn.click_tree("Filters", "Open servers only")
    quarn.do.wait("*US*", "rows", quarn.control("lvwServers"))
    shown = {row.address.removesuffix(":1"): row.location for row in quarn.rows()}
    assert shown == dict(zip(ADDRESSES, COUNTRIES))
    shown_flags = [flag for flag in flags(quarn) if flag >= 0]
    assert len(set(shown_flags)) == len(shown_flags) == len(set(COUNTRIES) - {"--"})
    assert quarn.close() == 0
