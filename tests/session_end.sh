#!/usr/bin/env bash
# The real program, ended by the session (SIGTERM) once its first start has
# compiled the shipped history: it ends with status 0, and its folder holds
# Kuvo.Mdb alone, a copy of which holds the compiled draws.
set -euo pipefail
program=$1 store=$2 driver=$3 work=$4
rm -rf "$work"
mkdir -p "$work/app" "$work/copy"
cp "$program" "$work/app/kuvo"
cp "$store" "$work/app/Kuvo.Mdb"
count() {
  printf 'sql "SELECT COUNT(*) FROM Sorties"\n' > "$work/count.kvs"
  "$driver" "$work/count.kvs" --folder "$1" 2>/dev/null || echo 0
}
expected=$(printf 'sql "SELECT COUNT(*) FROM Kuvo"\n' > "$work/kuvo.kvs" && "$driver" "$work/kuvo.kvs" --folder "$work/app")
QT_QPA_PLATFORM=offscreen "$work/app/kuvo" &
pid=$!
for _ in $(seq 1 600); do
  [ "$(count "$work/app")" = "$expected" ] && break
  sleep 0.1
done
sleep 1
kill -TERM "$pid"
status=0
wait "$pid" || status=$?
if [ "$status" -ne 0 ]; then echo "kuvo ended with status $status"; exit 1; fi
left=$(cd "$work/app" && ls -A | grep -v '^kuvo$' | tr '\n' ' ')
if [ "$left" != "Kuvo.Mdb " ]; then echo "beside the program: $left"; exit 1; fi
cp "$work/app/Kuvo.Mdb" "$work/copy/Kuvo.Mdb"
got=$(count "$work/copy")
if [ "$got" != "$expected" ]; then echo "the copy holds $got draws, not $expected"; exit 1; fi
echo "ok: $got draws in Kuvo.Mdb alone"
