# Shared by the scripts in this folder. Sourced by bash in the root of the project.

# Runs a command as root.
as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    echo "This needs root or sudo: $*" >&2
    return 1
  fi
}

# install_missing SET...: installs the missing packages of these sets.
install_missing() {
  local set package missing=()
  for package in $(for set in "$@"; do awk -v set="$set" '$1 == set { print $2 }' scripts/packages; done); do
    if [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
      missing+=("$package")
    fi
  done
  if [ ${#missing[@]} -eq 0 ]; then
    return
  fi
  echo "Installing ${missing[*]}"
  update_libraries
  as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o Acquire::Retries=3 \
    install --no-install-recommends "${missing[@]}"
}

# update_libraries: brings up to date the installed libraries that a bundle could hold: those that the
# packages of the set "build" depend on. Where that fails, the bundle gets what is installed, and its
# install step names what could be newer.
update_libraries() {
  local packages
  mapfile -t packages < <(awk '$1 == "build" { print $2 }' scripts/packages |
    xargs apt-cache depends --recurse --installed --no-suggests --no-recommends --no-conflicts \
      --no-breaks --no-replaces --no-enhances | grep -E '^(lib|qt6-|fonts-)' | sort -u)
  as_root apt-get -q -o Acquire::Retries=3 update
  as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o Acquire::Retries=3 \
    install --only-upgrade --no-install-recommends "${packages[@]}" ||
    echo "Not all libraries could be brought up to date." >&2
}

# build PRESET: configures and builds. Prints the output of the configuration only if it fails.
build() {
  local said
  if ! said=$(cmake --preset "$1" 2>&1); then
    printf '%s\n' "$said" >&2
    return 1
  fi
  cmake --build --preset "$1"
}

# Runs a Python program with the desktop driver in tests/desk.
with_driver=(env "PYTHONPATH=$PWD/tests/desk" /usr/bin/python3 -B)
