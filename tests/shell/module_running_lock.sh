#!/usr/bin/env bash
# Another program can tell that the module is running: while a host has it loaded, an
# exclusive lock on the TarvikKelvo file is refused; once the host exits it is granted.
host=$1 tests=$2
source "$tests/shell/assert.bash"
export XDG_RUNTIME_DIR=$scratch/runtime
mkdir -p "$XDG_RUNTIME_DIR"
lock=$XDG_RUNTIME_DIR/TarvikKelvo

mkfifo commands
"$host" <commands >host.out 2>&1 &
pid=$!
exec 3>commands
echo '(princ "ready")' >&3
for _ in $(seq 50); do grep -q ready host.out 2>/dev/null && break; sleep 0.1; done

expect_eq "the lock file exists while the module runs" yes "$([ -f "$lock" ] && echo yes || echo no)"
expect_eq "an exclusive lock is refused while the module runs" refused \
  "$(flock -xn "$lock" true && echo granted || echo refused)"
expect_eq "a shared lock is granted while the module runs" granted \
  "$(flock -sn "$lock" true && echo granted || echo refused)"

exec 3>&-
wait "$pid"
expect_eq "an exclusive lock is granted after the host exits" granted \
  "$(flock -xn "$lock" true && echo granted || echo refused)"
finish
