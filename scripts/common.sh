# Sourced by the scripts: moves to the checkout and installs what is missing.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# need PACKAGE...: installs the Debian packages that are not there yet.
need() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  echo "Installing ${missing[*]}"
  local sudo=
  [ "$(id -u)" -eq 0 ] || sudo=sudo
  $sudo apt-get update -qq
  $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    "${missing[@]}" >/dev/null
}

# need_source PACKAGE: prints the folder with the sources of a package of the distribution, fetched
# once; for cross-builds, where no built one is at hand.  Nothing where they cannot be had.
need_source() {
  local folder=$PWD/build-sources/$1 work
  if [ ! -d "$folder" ]; then
    work=$(mktemp -d)
    mkdir -p "$work/parts" "$work/lists/partial" "$work/tree"
    sed 's/^Types: deb$/Types: deb-src/' /etc/apt/sources.list.d/{debian,ubuntu}.sources \
      >"$work/parts/source.sources" 2>/dev/null || true
    sed -n 's/^deb /deb-src /p' /etc/apt/sources.list >"$work/parts/source.list" 2>/dev/null || true
    local apt=(apt-get -qq -o Dir::Etc::sourcelist=- -o "Dir::Etc::sourceparts=$work/parts"
      -o "Dir::State::lists=$work/lists" -o APT::Sandbox::User=root)
    (cd "$work" && "${apt[@]}" update && "${apt[@]}" source --download-only "$1" &&
      tar -xf "$1"_*.orig.tar.* -C tree --strip-components=1) >/dev/null 2>&1 || true
    if [ -n "$(ls "$work/tree")" ]; then
      mkdir -p "${folder%/*}"
      mv "$work/tree" "$folder"
    fi
    rm -rf "$work"
  fi
  [ ! -d "$folder" ] || printf '%s\n' "$folder"
}

jobs=$(nproc)
