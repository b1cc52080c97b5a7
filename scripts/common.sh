# What the scripts share. To be sourced.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
# Wine keeps its files there; a job runner may leave it out.
export HOME=${HOME:-$(getent passwd "$(id -u)" | cut -d: -f6)}

# Installs those of the Debian packages named that are missing. Fails, with a line that says why, if
# that is not possible here.
require_packages() {
  local missing=() package
  for package in "$@"; do
    dpkg-query --show --showformat='${db:Status-Status}\n' "$package" 2>/dev/null |
      grep -qx installed || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0

  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
      echo "missing packages, and no sudo to install them: ${missing[*]}" >&2
      return 1
    }
    as_root=(sudo)
  fi
  command -v apt-get >/dev/null || {
    echo "missing packages, and no apt-get to install them: ${missing[*]}" >&2
    return 1
  }
  local install=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive
    apt-get install --yes --no-install-recommends "${missing[@]}")
  echo "Installing: ${install[*]}" >&2
  { "${as_root[@]}" apt-get update && "${install[@]}"; } >/dev/null || {
    echo "the packages could not be installed: ${missing[*]}" >&2
    return 1
  }
}

# Configures and builds a preset.
build_preset() {
  cmake --preset "$1" >/dev/null
  cmake --build --preset "$1"
}

# Lays out a fresh copy of the sample server in the folder $1, with the stand-in library $2.
lay_out_sample_server() {
  local folder=$1 library=$2 settings
  rm -rf "$folder"
  mkdir -p "$(dirname "$folder")"
  cp -r sample-server "$folder"
  cp "$library" "$folder/program/nnotes.dll"
  settings=$(<"$folder/program/notes.ini")
  printf '%s\n' "${settings//@SERVER@/"$(cd "$folder" && pwd)"}" >"$folder/program/notes.ini"
}
