#!/usr/bin/env bash
# nerit-cli flash against nerit-sim's boot loader: a restore point of the tune is kept first,
# then the loader receives the image followed by
# 0xFF up to 130048 bytes, after the start request or (--recovery) at once; a file above
# 130084 bytes is refused with nothing sent (exit 5); a loader that stops acknowledging a block
# or does not report the end of programming ends the update with exit status 4, a controller
# that does not answer the start request with exit status 3.
#   flash_test.sh NERIT_CLI NERIT_SIM
set -euo pipefail
cli=$1
sim=$2
. "$(dirname "$0")/sim_support.sh"

# The virtual loader programs at once and writes each image it takes to $work/flashed.bin.
start_loader() {
  rm -f "$work/flashed.bin"
  start_sim --block-programming-ms 0 --flash-image "$work/flashed.bin" "$@"
}
# Runs nerit-cli flash; its exit status in $status, its output in $work/out and $work/err.
flash() {
  set +e
  "$cli" flash "$@" > "$work/out" 2> "$work/err"
  status=$?
  set -e
}

# A normal update: the image, then erased flash up to the 1016 blocks.
head -c 100000 /dev/urandom > "$work/image.bin"
{ cat "$work/image.bin"; head -c 30048 /dev/zero | tr '\0' '\377'; } > "$work/expected.bin"
start_loader
flash "$work/image.bin" --port "$device" --data-dir "$work/data"
[ "$status" = 0 ] || fail "a normal update gave exit status $status: $(cat "$work/err")"
# The tune is kept before the boot loader starts.
grep -q "^restore point: $work/data/backups/.*_nerit-cli flash_read.inj$" "$work/err" ||
  fail "no restore point: $(cat "$work/err")"
"$cli" show "$work"/data/backups/*_read.inj > "$work/shown" || fail "show: $(cat "$work/shown")"
grep -q "^Zylinder  *4$" "$work/shown" || fail "restore point $(cat "$work/shown")"
cmp "$work/flashed.bin" "$work/expected.bin" || fail "the loader took other bytes"
[ "$(cat "$work/out")" = "flashed $work/image.bin (100000 bytes)" ] || fail "printed '$(cat "$work/out")'"
grep -q $'\r' "$work/err" || fail "no progress line rewritten in place: $(cat "$work/err")"
last=$(tr '\r' '\n' < "$work/err" | grep -v '^ *$' | tail -1)
[[ "$last" =~ ^"block 1016/1016  100%  "[0-9]+:[0-9][0-9]" elapsed"\ *$ ]] ||
  fail "the progress ended with '$last'"

# Recovery with the largest file: the loader already waits; the 36 bytes past the 1016
# blocks are never sent.
head -c 130084 /dev/urandom > "$work/largest.bin"
head -c 130048 "$work/largest.bin" > "$work/expected.bin"
start_loader --boot-loader
flash "$work/largest.bin" --port "$device" --recovery
[ "$status" = 0 ] || fail "a recovery gave exit status $status: $(cat "$work/err")"
cmp "$work/flashed.bin" "$work/expected.bin" || fail "the loader took other bytes in recovery"

# One byte too many: refused before anything goes out.
head -c 130085 /dev/urandom > "$work/large.bin"
start_loader --boot-loader
flash "$work/large.bin" --port "$device" --recovery
[ "$status" = 5 ] || fail "a file of 130085 bytes gave exit status $status"
grep -q "large.bin has 130085 bytes, more than the 130084" "$work/err" || fail "$(cat "$work/err")"
[ ! -e "$work/flashed.bin" ] || fail "the loader took an image from a file too large"

# Without a restore point, reply 1 is the 0x05, replies 2..40 acknowledge blocks 1..39;
# block 40's never comes.
start_loader --silent-after 40
flash "$work/image.bin" --port "$device" --timeout 300 --no-backup
[ "$status" = 4 ] || fail "a silent loader gave exit status $status"
grep -q "^nerit-cli flash: the boot loader did not acknowledge block 40 of 1016 within 300 ms$" \
  "$work/err" || fail "$(cat "$work/err")"

# Reply 1018 is the 0x07 after the last block's 0x06: the update is not taken as done.
start_loader --drop 1018
flash "$work/image.bin" --port "$device" --timeout 300 --no-backup
[ "$status" = 4 ] || fail "a missing end of programming gave exit status $status"
grep -q "^nerit-cli flash: the boot loader did not report the end of programming within 300 ms$" \
  "$work/err" || fail "$(cat "$work/err")"

# Nothing answers the start request.
start_loader --silent-at 0
flash "$work/image.bin" --port "$device" --timeout 300 --no-backup
[ "$status" = 3 ] || fail "a silent controller gave exit status $status"
grep -q "^nerit-cli flash: no controller answered the boot-loader request on $device within 300 ms$" \
  "$work/err" || fail "$(cat "$work/err")"
echo "ok"
