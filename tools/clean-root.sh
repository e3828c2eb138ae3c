# Clean installations of Debian in a directory; sourced by release-check.

# have_clean_root: whether they can be made here; says why not.
have_clean_root() {
  local missing=
  [ "$(id -u)" -eq 0 ] || missing="root"
  command -v debootstrap >/dev/null || [ -n "${CLEAN_ROOT:-}" ] || missing="${missing:+$missing and }debootstrap"
  unshare --mount true 2>/dev/null || missing="${missing:+$missing and }mount namespaces"
  [ -z "$missing" ] || { say "SKIPPED: a clean root needs $missing"; return 1; }
}

# debian_sources: the lines of sources.list for the release and the mirror that this machine uses.
debian_sources() {
  apt-get indextargets --format 'deb $(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' 'Origin: Debian' | sort -u
}

# make_clean_root DIRECTORY: a minimal Debian, as it is after an installation without any task.
make_clean_root() {
  local codename mirror
  if [ -z "${CLEAN_ROOT:-}" ]; then
    CLEAN_ROOT=$work/clean-root
    codename=$(. /etc/os-release && echo "$VERSION_CODENAME")
    mirror=$(debian_sources | awk -v codename="$codename" '$3 == codename { print $2; exit }')
    say "Making a clean root"
    quietly "debootstrap" debootstrap --variant=minbase "$codename" "$CLEAN_ROOT" "$mirror"
  fi
  cp --archive --one-file-system "$CLEAN_ROOT" "$1"
  debian_sources >"$1/etc/apt/sources.list"
  cp /etc/resolv.conf "$1/etc/resolv.conf"
  printf '#!/bin/sh\nexit 101\n' >"$1/usr/sbin/policy-rc.d" # starts no services
  chmod +x "$1/usr/sbin/policy-rc.d"
  quietly "Reading the package lists" in_root "$1" apt-get update
}

# in_root DIRECTORY COMMAND...: runs a command there, without a network if OFFLINE is set. Its mounts and processes end
# with it.
in_root() {
  unshare ${OFFLINE:+--net} --mount --pid --fork --kill-child bash -c '
    root=$1
    shift
    mount -t proc proc "$root/proc"
    mount --rbind /dev "$root/dev"
    exec env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 \
      DEBIAN_FRONTEND=noninteractive chroot "$root" "$@"' - "$@"
}
