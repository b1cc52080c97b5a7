# What the scripts share. To be sourced.

set -euo pipefail
# With CDPATH "cd" may lead elsewhere, and prints where. The build knows its folder by the name without
# links, and what runs in another root or system finds it by that name alone.
unset CDPATH
cd -P "$(dirname "${BASH_SOURCE[0]}")/.."
# Wine keeps its files there; a job runner may leave it out.
export HOME=${HOME:-$(getent passwd "$(id -u)" | cut -d: -f6)}

# What the programs are built with.
build_packages=(g++ cmake ninja-build nlohmann-json3-dev libcli11-dev libdtl-dev libexpat1-dev)

# What a stranger's project needs that is built with the installed support library.
stranger_packages=(libssl-dev openssl pkg-config python3)

# What a command is to stand behind that only root may run; empty for root. Where there is no way to
# become root, the command itself will say so.
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)

# Installs those of the Debian packages named that are missing. Fails, with lines that say why, if that
# is not possible here.
require_packages() {
  local missing=() package said
  for package in "$@"; do
    dpkg-query --show --showformat='${db:Status-Status}\n' "$package" 2>/dev/null |
      grep -qx installed || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0

  [ ${#as_root[@]} -eq 0 ] || command -v sudo >/dev/null || {
    echo "missing packages, and no sudo to install them: ${missing[*]}" >&2
    return 1
  }
  command -v apt-get >/dev/null || {
    echo "missing packages, and no apt-get to install them: ${missing[*]}" >&2
    return 1
  }
  local install=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive
    apt-get install --yes --no-install-recommends "${missing[@]}")
  echo "Installing: ${install[*]}" >&2
  said=$({ "${as_root[@]}" apt-get update && "${install[@]}"; } 2>&1) || {
    printf '%s\n' "$said" | tail -n 20 >&2
    echo "the packages could not be installed: ${missing[*]}" >&2
    return 1
  }
}

# Configures the preset $1 and builds it: all that belongs to it, or the targets named behind it.
build_preset() {
  local preset=$1
  shift
  [ $# -eq 0 ] || set -- --target "$@"
  cmake --preset "$preset" >/dev/null
  cmake --build --preset "$preset" "$@" -- --quiet
}

# What programs say of a full disk is easily missed among the rest.
tell_full_disks() {
  local folder
  for folder in "$PWD" "${TMPDIR:-/tmp}" "$HOME"; do
    [ "$(df --output=avail "$folder" | tail -n 1)" -ge 1024 ] || echo "  no space is left on the disk of $folder"
  done
}

# Runs the command behind the name $1 as one step in a shell of its own, so that a failure ends the
# step and not the script. A line tells the name, how it went and how long; what the command wrote
# shows only if it failed. It is kept in memory, because a full disk is one of the failures: so what
# the command leaves in the background must not hold its output open. To be called where a failure is
# not looked at: "||" behind it would let the command go on after a failure of its own.
run_step() {
  local - name=$1 started=$SECONDS status output
  shift
  printf '%-12s ' "$name"
  set +e
  output=$(
    set -e
    "$@" 2>&1
  )
  status=$?
  if [ "$status" -eq 0 ]; then
    echo "ok, $((SECONDS - started)) s"
  else
    echo "FAILED with status $status, $((SECONDS - started)) s; its output:"
    printf '%s\n' "$output" | sed 's/^/  /'
    tell_full_disks
  fi
  return "$status"
}

# Makes the files of a Wine in the folder $1, if there are none; the words behind it, with a command
# behind them, run that command where this Wine is. The files come to their place when all is written:
# Wine's server holds back what is to be on the disk until it ends, and what it leaves if it is ended
# before never works.
make_wine_prefix() {
  local prefix=$1
  shift
  "$@" sh -c '[ -d "$1" ] || {
    export WINEPREFIX="$1.new" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" &&
      rm -rf "$WINEPREFIX" && mkdir -p "$WINEPREFIX" && wineboot --init </dev/null &&
      wineserver --wait && mv "$WINEPREFIX" "$1"
  }' sh "$prefix" || {
    echo "Wine's own files could not be made in $prefix" >&2
    return 1
  }
}
