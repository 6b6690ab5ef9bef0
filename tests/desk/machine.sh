#!/bin/sh
# Runs a program on a machine like this one, but with its own /opt, which is empty, and with or
# without /Applications. Call it in a mount name space of its own (unshare --mount), with the right to
# mount.
#
#   machine.sh NONE|OWN|ROOTS USER FOLDER PROGRAM...
#
# NONE has no /Applications; the others have one that belongs to USER or to root. The program runs as
# USER (a number, 0 for root). FOLDER is an empty folder for the machine's root: its opt and
# Applications hold what the program has installed.
set -e
applications=$1 user=$2 root=$3
shift 3
for item in /*; do
  case $item in
    /Applications | /opt) continue ;;
  esac
  if [ -L "$item" ]; then
    cp -P "$item" "$root$item"
  elif [ -d "$item" ]; then
    mkdir "$root$item"
    mount --rbind "$item" "$root$item"
  fi
done
mkdir -m 755 "$root/opt"
case $applications in
  OWN) install -d -o "$user" "$root/Applications" ;;
  ROOTS) install -d "$root/Applications" ;;
esac
if [ "$user" -ne 0 ]; then
  exec chroot --userspec="$user:$user" "$root" "$@"
fi
exec chroot "$root" "$@"
