# Sourced by the nerit-cli scripts: a scratch folder, nerit-sim on a pseudo-terminal, failing.
#   cli=NERIT_CLI sim=NERIT_SIM; . sim_support.sh
work=$(mktemp -d)
sim_pid=
cleanup() {
  [ -n "$sim_pid" ] && kill "$sim_pid" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT

# Starts nerit-sim unpaced with the given flags; its first line is the device it serves.
start_sim() {
  [ -n "$sim_pid" ] && kill "$sim_pid" 2>/dev/null || true
  : > "$work/sim.out"
  "$sim" --no-pacing "$@" > "$work/sim.out" 2> "$work/sim.err" &
  sim_pid=$!
  for _ in $(seq 50); do [ -s "$work/sim.out" ] && break; sleep 0.1; done
  device=$(head -1 "$work/sim.out")
  [ -e "$device" ] || fail "nerit-sim $* gave no device ('$device')"
}
# Says what the virtual controller reported too, so that a failure can be told from a fault of
# the controller itself.
fail() {
  echo "FAILED: $*"
  if [ -n "$sim_pid" ]; then
    kill -0 "$sim_pid" 2>/dev/null && echo "nerit-sim $sim_pid runs" || echo "nerit-sim $sim_pid ended"
    cat "$work/sim.err" 2>/dev/null
  fi
  exit 1
}
