#!/usr/bin/env bash
# nerit-cli against nerit-sim on a pseudo-terminal: "info" prints the firmware text, "ports"
# numbers a named device first, a silent controller ends with exit status 3 (no controller)
# and so does a device that does not exist; read -> write -> read gives the same file, a
# changed cell reads back and diff names it, "log" writes N rows and switches the stream off,
# Ctrl-C ends a log cleanly, a controller that does not keep what is written ends with status
# 6, and one that goes silent mid-read with status 4.
#   online_test.sh NERIT_CLI NERIT_SIM
set -euo pipefail
cli=$1
sim=$2
. "$(dirname "$0")/sim_support.sh"

start_sim
out=$("$cli" info --port "$device") || fail "info exited with $?"
[ "$out" = "Nerit SIM V1.00" ] || fail "info printed '$out'"

first=$("$cli" ports --port "$device" | head -1)
[ "$first" = "1  $device  serial port" ] || fail "ports printed '$first'"

start_sim --silent-at 0
set +e
"$cli" info --port "$device" --timeout 300 2> "$work/err"
status=$?
set -e
[ "$status" = 3 ] || fail "a silent controller gave exit status $status"
grep -q "no controller answered on $device within 300 ms" "$work/err" || fail "$(cat "$work/err")"

set +e
"$cli" info --port /dev/nerit-no-such-device 2> /dev/null
status=$?
set -e
[ "$status" = 3 ] || fail "a missing device gave exit status $status"
# The data folder: the MAP load axis of the virtual controller's tune needs a sensor table.
data=$work/data
mkdir -p "$data"
for kpa in $(seq 0 250); do printf "\\x$(printf %02x $((kpa * 255 / 250)))"; done \
  > "$data/PressureSensor.dat"
line=(--port "$device" --data-dir "$data")

start_sim
"$cli" read "$work/a.inj" "${line[@]}" 2> "$work/err" > /dev/null || fail "read: $(cat "$work/err")"
grep -q "^connected: Nerit SIM V1.00$" "$work/err" || fail "read said $(cat "$work/err")"
"$cli" write "$work/a.inj" "${line[@]}" 2> "$work/err" > "$work/out" || fail "write: $(cat "$work/err")"
grep -q "^restore point: $data/backups/....-..-.._..-..-.._nerit-cli write_read.inj$" "$work/err" \
  || fail "write said $(cat "$work/err")"
"$cli" diff "$work/a.inj" "$data"/backups/*_read.inj > /dev/null || fail "the restore point differs"
"$cli" read "$work/b.inj" "${line[@]}" &> /dev/null || fail "second read"
cmp -s "$work/a.inj" "$work/b.inj" || fail "read -> write -> read changed the file"

# One correction cell changed through the CSV, written without a restore point, read back.
"$cli" export "$work/a.inj" --csv "$work/maps.csv"
sed -i '3s/^\([^;]*;[^;]*;[^;]*\);[^;]*/\1;12/' "$work/maps.csv"
cp "$work/a.inj" "$work/c.inj"
"$cli" import "$work/c.inj" "$work/maps.csv" > /dev/null || fail "import"
"$cli" write "$work/c.inj" "${line[@]}" --no-backup 2> /dev/null > /dev/null || fail "write c"
[ "$(ls "$data/backups" | wc -l)" = 1 ] || fail "--no-backup kept a restore point"
"$cli" read "$work/d.inj" "${line[@]}" &> /dev/null || fail "third read"
cmp -s "$work/c.inj" "$work/d.inj" || fail "the changed cell did not read back"
set +e
"$cli" diff "$work/a.inj" "$work/d.inj" > "$work/out"
status=$?
set -e
[ "$status" = 1 ] || fail "diff of a changed cell gave exit status $status"
grep -q "row 1, column 3" "$work/out" || fail "diff said $(cat "$work/out")"

"$cli" read --json "${line[@]}" > "$work/tune.json" 2> /dev/null || fail "read --json"
grep -q '"rpmfaktor":30000000' "$work/tune.json" || fail "read --json printed $(cat "$work/tune.json")"

"$cli" write "$work/a.inj" "${line[@]}" --no-backup --eeprom --permanent > "$work/out" 2> /dev/null \
  || fail "write --eeprom --permanent"
grep -q "^made the working memory permanent$" "$work/out" || fail "write said $(cat "$work/out")"

# A log of 7 rows: the header, the rows, and the stream off afterwards (the line stays quiet).
"$cli" log "$work/log.csv" --frames 7 "${line[@]}" 2> /dev/null || fail "log"
[ "$(head -1 "$work/log.csv")" = $'Drehzahl  Inj_in  Inj_out Inj_adj MAP TPS Airflow\r' ] \
  || fail "log header $(head -1 "$work/log.csv")"
[ "$(wc -l < "$work/log.csv")" = 8 ] || fail "log has $(wc -l < "$work/log.csv") lines"
grep -c $'^[0-9]*;[0-9]*;[0-9]*;-*[0-9]*;-*[0-9]*;[0-9]*;[0-9]*\r$' "$work/log.csv" | grep -q '^7$' \
  || fail "log rows $(cat "$work/log.csv")"
quiet=$(timeout 0.5 cat "$device" | wc -c || true)
[ "$quiet" = 0 ] || fail "the stream stayed on ($quiet bytes after the log)"

# Ctrl-C ends a log between two frames, with exit status 0.
"$cli" log "$work/int.csv" "${line[@]}" 2> "$work/err" &
log_pid=$!
sleep 1
kill -INT "$log_pid"
wait "$log_pid" || fail "a log ended by Ctrl-C exited with $?"
grep -q "^[1-9][0-9]* rows$" "$work/err" || fail "Ctrl-C log said $(cat "$work/err")"

# A controller that acknowledges writes without keeping them: the read-back names the first block that differs (the load axis: from the sensor table).
start_sim --forget-writes
set +e
"$cli" write "$work/c.inj" "${line[@]}" --no-backup > /dev/null 2> "$work/err"
status=$?
set -e
[ "$status" = 6 ] || fail "a controller that kept nothing gave exit status $status"
grep -q "^nerit-cli write: block 0x260 reads back differently after the write$" "$work/err" \
  || fail "$(cat "$work/err")"

# Silent after the connect and four blocks: the read asks again twice, then gives up.
start_sim --silent-after 5
set +e
"$cli" read "$work/e.inj" "${line[@]}" --timeout 200 2> "$work/err"
status=$?
set -e
[ "$status" = 4 ] || fail "a controller silent mid-read gave exit status $status"
grep -q "^no answer for block 0x280, asking again (3 of 3)$" "$work/err" || fail "$(cat "$work/err")"
grep -q "did not answer the read of block 0x280 within 200 ms, 3 times$" "$work/err" \
  || fail "$(cat "$work/err")"
[ ! -e "$work/e.inj" ] || fail "a failed read left a file"

echo "ok"
