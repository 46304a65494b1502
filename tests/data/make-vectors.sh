#!/bin/bash
# Makes the test data of data files and presets anew, with tools that share no code with the library: openssl
# for protected blocks, Info-ZIP and Python for archives. Run it after a change here and commit what it made;
# the same tools make the same bytes again, because times, modes and initialisation vectors are fixed.
#
# The text files but blocks.txt are not made here: they are written by hand, as what is documented.
set -euo pipefail
cd "$(dirname "$0")"
export TZ=UTC LC_ALL=C.UTF-8
umask 022
work=$(mktemp -d)
trap 'rm -r "$work"' EXIT

# Bytes and their hex digits.
hex() { od -An -v -tx1 | tr -d ' \n'; }
bytes() { printf '%b' "$(sed 's/../\\x&/g' <<<"$1")"; }

# The SHA-1 digest of a text in hex digits up to its first zero byte, as C's strings end.
digest_of_text() {
    local text='' byte
    for byte in $(fold -w2 <<<"$1"); do
        [ "$byte" = 00 ] && break
        text+=$byte
    done
    bytes "$text" | sha1sum | cut -c1-40
}

# The AES-256 key of a password in hex digits: the password is halved, an odd byte goes to the second half; the
# digest of the second half comes first and the digest of the first half is cut to fill 32 bytes.
key() {
    # shellcheck disable=SC2017 # rounded to whole bytes
    local half=$((${#1} / 4 * 2))
    local digests
    digests=$(digest_of_text "${1:half}")$(digest_of_text "${1:0:half}")
    echo "${digests:0:64}"
}

# protect PASSWORD-IN-HEX LABEL <PLAIN >BLOCK: pad count, initialisation vector, cipher text. The label decides
# the vector.
protect() {
    local iv pad
    cat >"$work/plain"
    iv=$(printf %s "$2" | sha1sum | cut -c1-32)
    pad=$(((16 - $(stat -c %s "$work/plain") % 16) % 16))
    head -c "$pad" /dev/zero >>"$work/plain"
    bytes "$(printf %02x "$pad")$iv"
    openssl enc -aes-256-cbc -nopad -K "$(key "$1")" -iv "$iv" -in "$work/plain"
}

password() { printf %s "$1" | hex; }

# --- blocks.txt: a block per row, in hex digits.
row() {
    local block
    block=$(bytes "$3" | protect "$2" "$1" | hex)
    echo "$1 | $2 | $3 | $block"
}
{
    echo '# Protected blocks of openssl; bytes in hex digits.'
    echo 'case | password | plain | block'
    even=$(password 'house-planner!')
    for length in 0 1 15 16 17; do
        row "plain text of $length bytes" "$even" "$(seq -f %02.0f 10 99 | head -n "$length" | tr -d '\n')"
    done
    row 'plain text ending in zero bytes' "$even" 616263000000
    row 'plain text of a block of zero bytes' "$even" 00000000000000000000000000000000
    text=$(printf 'some text' | hex)
    row 'password of odd length' "$(password 'planner')" "$text"
    row 'password of one character' "$(password 'x')" "$text"
    row 'password ab' "$(password 'ab')" "$text"
    row 'password ba' "$(password 'ba')" "$text"
    row 'password with umlauts' "$(password 'Öl-Gemälde')" "$text"
    row 'password halved inside a character' "$(password 'ü')" "$text"
    row 'password with a zero byte in its first half' 6162006364656667 "$text"
    row 'password with a zero byte in its second half' 6162636465006667 "$text"
    row 'password empty' '' "$text"
} >blocks.txt

# --- A file of its own, larger than 64 KiB.
seq -f %07.0f 1 8201 | protect "$(password 'house-planner!')" large >large.dat

# --- Archives.
python3 - <<'PYTHON'
import zipfile

def archive(name, entries, method=zipfile.ZIP_STORED):
    with zipfile.ZipFile(name, "w", method) as archive:
        for entry, content in entries:
            archive.writestr(zipfile.ZipInfo(entry), content, method)

archive("empty.zip", [])
archive("small.zip", [("first.txt", "The first one."), ("second.txt", "The second one."), ("last.txt", "")])
long_names = {255: "a", 256: "b", 257: "c", 5000: "d"}
archive("names.zip", [(c * n, f"name of {n} bytes") for n, c in long_names.items()] + [("short", "!")])
archive("python.zip", [("Möbel/Stühle.txt", "Stuhl " * 9 + "Tisch"), ("table", "")], zipfile.ZIP_DEFLATED)
zipfile.ZIP64_LIMIT = 4  # all that is larger gets the long form of sizes; minizip does not read it everywhere
archive("zip64.zip", [("first.txt", "Sizes in 64 bits.")])
PYTHON

archive_folder() { # archive_folder ARCHIVE OPTION FILE...
    local archive=$PWD/$1
    rm -f "$archive"
    (cd "$work/files" && find . -exec touch -d 2012-05-04T10:20:30Z {} + && zip -qXD "$2" "$archive" "${@:3}")
}
mkdir -p "$work/files/models/chairs"
printf 'zip %.0s' {1..9} >"$work/files/zeta.txt"
printf zap >>"$work/files/zeta.txt"
printf 'four legs' >"$work/files/models/chairs/plain.txt"
archive_folder deflated.zip -9 zeta.txt models/chairs/plain.txt
(cd "$work/files" && zip -qX - zeta.txt | cat) >streamed.zip # sizes behind the content
printf room_height | protect "$(password 'ab')" presets >"$work/files/presets.txt"
printf '' | protect "$(password 'ab')" nothing >"$work/files/nothing.txt"
printf '%.0sA' {1..48} | protect "$(password 'ab')" even >"$work/files/even.txt"
archive_folder protected.zip -9 presets.txt nothing.txt even.txt

# --- Preset files, for the password a build has by default.
presets() { protect "$(password "${2:-globals-demo-presets}")" "$1" >"presets-$1.dat"; }
printf '%b' '# Rooms\r\n\r\nroom_height=260\r\n \tWALL_Strength=35 \n#max_room_height=5\n\n' \
    'default_floor_material_id=geölter-Ahorn\nmin_wall_length=7' | presets good
printf 'room_height=260\na=b=c\nroom_height=280\n' | presets two-separators
printf 'room_height=260\n  show_endstrips \nroom_height=280\n' | presets no-separator
printf 'room_height=260\nHöhe=3\nroom_height=280\n' | presets unknown-key
printf 'room_height=260\nroom_height = 280\n' | presets blanks
printf '\0\nroom_height=260' | presets zero-byte
printf 'room_height=260\n' | presets wrong-password 'planner-demo-globals'
printf '' | presets nothing
