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

jobs=$(nproc)
