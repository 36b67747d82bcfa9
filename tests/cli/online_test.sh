#!/usr/bin/env bash
# nerit-cli against nerit-sim on a pseudo-terminal: "info" prints the firmware text, "ports"
# numbers a named device first, a silent controller ends with exit status 3 (no controller)
# and so does a device that does not exist.
#   online_test.sh NERIT_CLI NERIT_SIM
set -euo pipefail
cli=$1
sim=$2
work=$(mktemp -d)
sim_pid=
cleanup() {
  [ -n "$sim_pid" ] && kill "$sim_pid" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT

# Starts nerit-sim with the given flags; its first line is the device it serves.
start_sim() {
  [ -n "$sim_pid" ] && kill "$sim_pid" 2>/dev/null || true
  : > "$work/sim.out"
  "$sim" --no-pacing "$@" > "$work/sim.out" 2>/dev/null &
  sim_pid=$!
  for _ in $(seq 50); do [ -s "$work/sim.out" ] && break; sleep 0.1; done
  device=$(head -1 "$work/sim.out")
}
fail() { echo "FAILED: $*"; exit 1; }

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
echo "ok"
