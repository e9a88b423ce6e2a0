# What the root scripts share; sourced by them. Sets `root`, the folder of the checkout.
# shellcheck shell=bash

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd -P)

say() {
  printf '%s\n' "$*"
}

die() {
  printf '%s: %s\n' "$(basename -- "$0")" "$*" >&2
  exit 1
}

# Whether this user may make files in the folder, or make the folder.
is_own_folder() {
  if [[ -e $1 ]]; then
    [[ -d $1 && -O $1 && -w $1 ]]
  else
    [[ -w $(dirname -- "$1") ]]
  fi
}

# Prints a folder below the checkout to write into, or one below the user's cache where the
# checkout's belongs to another user.
own_folder() {
  local folder=$root/$1 cache
  if is_own_folder "$folder"; then
    printf '%s' "$folder"
    return
  fi
  cache=${XDG_CACHE_HOME:-${HOME:-/tmp}/.cache}/nelkvui/$(printf '%s' "$root" | cksum | cut -d ' ' -f 1)
  mkdir -p -- "$cache/$1"
  printf '%s' "$cache/$1"
}

build_root=${NEL_BUILD_ROOT:-$(own_folder build)}
jobs=$(nproc)

# configure PRESET [OPTION...]: configures build_root/PRESET; starts anew when the folder was
# configured for a checkout at another place.
configure() {
  local preset=$1 folder=$build_root/$1 fresh=() cache known
  shift
  cache=$folder/CMakeCache.txt
  if [[ -e $cache ]]; then
    known=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p;s/^CMAKE_CACHEFILE_DIR:INTERNAL=//p' "$cache" | sort)
    if [[ $known != "$(printf '%s\n' "$root" "$folder" | sort)" ]]; then
      fresh=(--fresh)
    fi
  fi
  (cd -- "$root" && cmake "${fresh[@]}" --preset "$preset" -B "$folder" "$@")
}

# build PRESET [TARGET...]
build() {
  local folder=$build_root/$1
  shift
  ninja -C "$folder" -j "$jobs" "$@"
}

# Calls its argument, a condition, until it holds; fails after so many seconds.
wait_until() {
  local give_up=$((SECONDS + $1))
  shift
  until "$@"; do
    ((SECONDS <= give_up)) || return 1
    sleep 0.05
  done
}

# with_progress LOG COMMAND...: runs a command with its output in a file. On a terminal a line that
# moves shows how far it is; its status is the command's.
with_progress() {
  local log=$1 watcher='' status=0
  shift
  : >"$log"
  if [[ -t 1 ]]; then
    show_last_line "$log" &
    watcher=$!
  fi
  "$@" >"$log" 2>&1 </dev/null || status=$?
  if [[ -n $watcher ]]; then
    kill "$watcher" 2>/dev/null || true
    wait "$watcher" 2>/dev/null || true
    printf '\r%*s\r' "${COLUMNS:-80}" ''
  fi
  return "$status"
}

show_last_line() {
  local width=$((${COLUMNS:-80} - 1)) line
  while sleep 0.5; do
    line=$(tail -n 1 -- "$1" | tr -cd '[:print:]')
    printf '\r%-*.*s' "$width" "$width" "  $line"
  done
}
