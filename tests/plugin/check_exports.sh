#!/bin/sh
# The module defines one symbol for others: check_exports.sh NM MODULE
set -eu
symbols=$("$1" -D --defined-only "$2" | awk '{ print $NF }')
if [ "$symbols" != REALPluginMain ]; then
  echo "expected REALPluginMain alone, found:"
  echo "$symbols"
  exit 1
fi
echo "$symbols"
