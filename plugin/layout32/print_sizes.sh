#!/bin/sh
# Prints the sizes of the registered instance data, in order of registration, from the object compiled for 32 bits:
#   print_sizes.sh NM OBJECT
set -eu
sizes=$("$1" -S "$2" | awk '$4 ~ /^registered_size_/ { print $4, $2 }' | sort | awk '{ print $2 }')
line=
for size in $sizes; do
  line="$line${line:+, }$(printf '%d' "0x$size")"
done
echo "$line"
