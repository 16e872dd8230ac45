# Sourced: Debian in a folder, made with debootstrap and entered as if it were the whole machine.
#
# `me`, the name of the script in its messages, is the caller's to set.

# shellcheck source=tools/as-root.sh
. "$(dirname "${BASH_SOURCE[0]}")/as-root.sh"

fail() {
  echo "$me: $*" >&2
  exit 1
}

# namespaces FLAG...: refuses with the reason where the kernel gives no such namespaces.
require_namespaces() {
  local refusal
  refusal=$(unshare "$@" true 2>&1) || fail "this machine gives a program no mounts of its" \
    "own ($refusal). A container needs the capability SYS_ADMIN for it, and a profile that lets it" \
    "mount; for an ordinary user the kernel must allow user namespaces."
}

# Where this machine's apt gets its packages.
mirror() {
  local address
  address=$(apt-get indextargets --format '$(ORIGIN) $(REPO_URI)' 'Created-By: Packages' |
    awk '$1 == "Debian" && !/security/ && !seen++ { print $2 }' || true)
  echo "${address:-http://deb.debian.org/debian}"
}

# What apt has been told here about proxies and dates holds there.
apt_options() {
  echo 'APT::Install-Recommends "false";'
  apt-config dump | grep -E '^Acquire::(https?::|Check-|Retries|ForceIPv4)' || true
}

# bootstrap RELEASE FOLDER PACKAGES: as root. All that debootstrap says is in FOLDER.log.
bootstrap() {
  local release=$1 folder=$2 packages=$3 part=$2.part log=$2.log proxy
  command -v debootstrap >/dev/null || fail "debootstrap is not installed (tools/setup debootstrap)"
  eval "$(apt-config shell proxy Acquire::http::Proxy)"
  rm -rf --one-file-system "$part"
  mkdir -p "$part"
  http_proxy=${proxy:-${http_proxy:-}} debootstrap --variant=minbase --include="$packages" \
    "$release" "$part" "$(mirror)" >"$log" 2>&1 ||
    { tail -n 20 "$log" >&2; fail "debootstrap failed; all that it said is in $log"; }
  apt_options >"$part/etc/apt/apt.conf.d/90tavin"
  echo force-unsafe-io >"$part/etc/dpkg/dpkg.cfg.d/90tavin"  # It may be made again at any time.
  printf '#!/bin/sh\nexit 101\n' >"$part/usr/sbin/policy-rc.d"  # No service starts there.
  chmod 755 "$part/usr/sbin/policy-rc.d"
  install -d -m 1777 "$part/var/cache/ccache"
  mv -T "$part" "$folder"
}

use_resolver_of_this_machine() {
  cp --dereference --remove-destination /etc/resolv.conf "$1/etc/resolv.conf"
}

# pivot_into FOLDER [DIRECTORY]: the rest of this process and its children see FOLDER, which is a
# mount and holds the folder .outside, as the whole machine. Not by chroot, within which the kernel
# gives an ordinary user no namespaces.
pivot_into() {
  cd "$1"
  pivot_root . .outside
  cd "${2:-/}"
  PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin
  umount --lazy /.outside
}
