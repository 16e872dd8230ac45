# Sourced: root's rights for one command, by way of sudo where the user is not root.

# Whether there is a way at all, as far as that can be told without asking for a password.
may_become_root() {
  [ "$(id -u)" = 0 ] && return
  command -v sudo >/dev/null || return
  sudo -n true 2>/dev/null || { : </dev/tty; } 2>/dev/null
}

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}
