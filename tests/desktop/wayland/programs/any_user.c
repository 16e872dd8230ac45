/* Preloaded into sway, which insists on leaving root's rights behind and takes it as done when they
 * cannot be taken back: in a container there is often no other user. */
#include <errno.h>
#include <sys/types.h>

int setuid(uid_t user);
int setgid(gid_t group);

int setuid(uid_t user) {
  (void)user;
  errno = EPERM;
  return -1;
}

int setgid(gid_t group) {
  (void)group;
  errno = EPERM;
  return -1;
}
