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
  as_root apt-get -q -o Acquire::Retries=3 update
  as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o Acquire::Retries=3 \
    install --no-install-recommends "${missing[@]}"
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
