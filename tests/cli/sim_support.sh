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
  "$sim" --no-pacing "$@" > "$work/sim.out" 2>/dev/null &
  sim_pid=$!
  for _ in $(seq 50); do [ -s "$work/sim.out" ] && break; sleep 0.1; done
  device=$(head -1 "$work/sim.out")
}
fail() { echo "FAILED: $*"; exit 1; }
