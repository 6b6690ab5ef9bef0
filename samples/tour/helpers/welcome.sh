#!/bin/sh
# Started at the end of the install, while the archive is still being put away.
folder=${HOME:-/tmp}/ZephinTour
mkdir -p "$folder" && date > "$folder/welcome.txt"
