#!/bin/sh
# A database server of the tests' own: postgres.sh start|stop PLACE [durable|network]. It stands in a new folder of the system's folder for
# temporary files, listens on a socket there (with "network" on the loopback interface, too), and touches no installed one; PLACE is a file that says where
# the folder is. A server refuses to run for root and its user can't reach everybody's folders, so that root hands it to
# the user `postgres`. It does not wait for the disk, unless it is to be durable.
set -eu

action=$1
place=$2
waits=off
[ "${3:-}" != durable ] || waits=on
addresses=
[ "${3:-}" != network ] || addresses=127.0.0.1

as_server() {
  if [ "$(id -u)" = 0 ]; then
    setpriv --reuid=postgres --regid=postgres --clear-groups "$@"
  else
    "$@"
  fi
}

stop() {
  [ -f "$place" ] || return 0
  folder=$(cat "$place")
  as_server "$bin/pg_ctl" stop -s -m immediate -w -t 5 -D "$folder/data" || true
  rm -rf "$folder"
  rm -f "$place"
}

bin=$(pg_config --bindir)
cd /
stop
[ "$action" = start ] || exit 0
folder=$(mktemp -d /tmp/kelpg.XXXXXX)
mkdir "$folder/data"
if [ "$(id -u)" = 0 ]; then
  chown -R postgres:postgres "$folder"
fi
chmod 755 "$folder"
echo "$folder" >"$place"
as_server "$bin/initdb" --no-sync -A trust -U postgres -E UTF8 --locale=C -D "$folder/data" >"$folder.log" 2>&1 || {
  cat "$folder.log" >&2
  exit 1
}
rm -f "$folder.log"
# Whoever is called so is asked for a password.
sed -i '1i local all con_clave scram-sha-256' "$folder/data/pg_hba.conf"
as_server "$bin/pg_ctl" start -s -w -D "$folder/data" -l "$folder/data/log" -o "-k $folder -c listen_addresses=$addresses -c fsync=$waits \
  -c full_page_writes=$waits -c synchronous_commit=$waits -c jit=off -c max_connections=200 -c autovacuum=off -c kel.gracia=0s" </dev/null >/dev/null 2>&1 || {
  cat "$folder/data/log" >&2
  exit 1
}
