#!/bin/sh
# No object of the module runs code when it is loaded: check_startup.sh NM OBJECT...
# What sanitizers add (priority 00099, asan) is not the module's.
set -eu
nm=$1
shift
if [ $# -lt 10 ]; then
  echo "only $# objects given"
  exit 1
fi
found=$("$nm" -A "$@" | grep -E '_GLOBAL__(sub_)?[ID]_|__static_initialization|__cxx_global_var_init' |
  grep -v -e '_00099_' -e asan || true)
if [ -n "$found" ]; then
  echo "$found"
  exit 1
fi
echo "$# objects without start-up code"
