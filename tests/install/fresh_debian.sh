#!/usr/bin/env bash
# Installs the package in a fresh Debian 12 and uses it there. Needs root and debootstrap; the mirror is the one that apt
# is configured for. usage: fresh_debian.sh PACKAGE.deb
set -euo pipefail
package=$(realpath "$1")
here=$(cd "$(dirname "$0")" && pwd)

mirror=$(apt-get indextargets --format '$(REPO_URI)' 'Codename: bookworm' | head -n 1)
[ -n "$mirror" ] || { echo "fresh_debian: apt has no Debian 12 (bookworm) among its sources" >&2; exit 1; }
root=$(mktemp -d)
chmod 755 "$root"  # apt reads as a user of its own
clean() {
  mountpoint -q "$root/proc" && umount "$root/proc"
  rm -rf --one-file-system "$root"
}
trap clean EXIT

debootstrap --variant=minbase bookworm "$root" "$mirror" >/dev/null
cp "$package" "$root/tmp/krz.deb"
cp "$here/toolbox_caller.c" "$root/tmp/"
inside() { chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }
inside apt-get update -qq
inside apt-get install -y -qq /tmp/krz.deb >/dev/null

use() {
  inside krz --version
  inside krz demo /tmp
  inside krz info /tmp/krz-demo.mov
  inside krz run /usr/share/doc/krz/examples/tracks.bas /tmp/krz-demo.mov
  inside krz chapters import /tmp/krz-demo.mov --every 2s -i
  inside krz chapters list /tmp/krz-demo.mov
  printf 'Print 6 * 7\n' | inside krz repl
}
echo "== without /proc"
mountpoint -q "$root/proc" && umount "$root/proc"
use
echo "== with /proc, elsewhere, through a link"
mount -t proc proc "$root/proc"
inside ln -s /usr/bin/krz /tmp/link
inside /tmp/link info /tmp/krz-demo.mov
echo "== manual pages and completion"
# Small images leave manual pages out; a person's system has them.
inside sh -c 'sed -i "/usr\/share\/man/d" /etc/dpkg/dpkg.cfg.d/* 2>/dev/null || true'
inside apt-get install -y -qq --no-install-recommends man-db bash-completion >/dev/null
inside sh -c 'man krz | head -n 4; man krz-chapters | grep -m 1 "krz chapters import"'
inside bash -c '
  . /usr/share/bash-completion/bash_completion
  _completion_loader krz
  COMP_WORDS=(krz chapters im) COMP_CWORD=2 COMP_LINE="krz chapters im" COMP_POINT=15
  function_name=$(complete -p krz | sed "s/.*-F \([^ ]*\).*/\1/")
  "$function_name" krz im chapters
  printf "completed: %s\n" "${COMPREPLY[*]}"
  [ "${COMPREPLY[*]}" = import ] || [ "${COMPREPLY[0]% }" = import ]'
echo "== a C program over the toolbox"
inside apt-get install -y -qq --no-install-recommends gcc libc6-dev pkg-config >/dev/null
inside sh -c 'gcc /tmp/toolbox_caller.c -o /tmp/caller $(pkg-config --cflags --libs krz-toolbox) && /tmp/caller /tmp/krz-demo.mov'
echo "== removed"
inside apt-get purge -y -qq krz >/dev/null
left=$(find "$root/usr" -path '*krz*' -not -path "$root/usr/share/doc/*" | head)
[ -z "$left" ] || { echo "fresh_debian: left behind: $left" >&2; exit 1; }
echo "the package works on a fresh Debian 12"
