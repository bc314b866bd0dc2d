#!/usr/bin/env bash
# Adds the events of profiling logs to the table "event" of an SQLite database, which
# is created if it does not exist. The column "log" is the path of the log, relative
# to the folder of the database.
#
#   load.sh DATABASE LOG...
set -euo pipefail
[ $# -ge 2 ] || { echo 'usage: load.sh DATABASE LOG...' >&2 && exit 1; }
database=$1
shift
folder=$(dirname -- "$database")
columns=message,kind,graph_index,run,backend,timestamp,event,parent,level,position,name
columns+=,type,value,unit,node_id
rows=$(mktemp)
trap 'rm -f "$rows"' EXIT

# Options override the user's ~/.sqliterc.
run_sql() { sqlite3 -bail -noheader -list "$database"; }

run_sql <<'END'
create table if not exists event (
  log text, message integer, kind text, graph_index integer, run integer,
  backend text, timestamp integer, event integer, parent integer, level integer,
  position integer, name text, type text, value integer, unit text,
  node_id integer, primary key (log, event));
END
for log in "$@"; do
  lumo-profile-export --input_profile_data "$log" --output "$rows"
  if [ "$(head -n 1 "$rows")" != "$columns" ]; then
    echo 'load.sh: lumo-profile-export did not print the expected columns' >&2
    exit 1
  fi
  path=$(realpath --relative-to="$folder" -- "$log")
  quoted=${path//\'/\'\'}
  if [ -n "$(run_sql <<<"select 1 from event where log = '$quoted' limit 1;")" ]; then
    echo "load.sh: $log is already in $database" >&2
    exit 1
  fi
  # Columns without a type keep texts unchanged until "event" converts them. Empty
  # numbers become NULL.
  run_sql <<END
create temp table import ($columns);
.import --csv --skip 1 --schema temp '$rows' import
insert into event select '$quoted', message, kind, graph_index, nullif(run, ''),
  backend, timestamp, event, nullif(parent, ''), level, position, name, type, value,
  unit, nullif(node_id, '') from import;
END
done
