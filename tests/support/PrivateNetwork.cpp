#include "support/PrivateNetwork.h"

#include <fcntl.h>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <stdexcept>

namespace support {

PrivateNetwork::PrivateNetwork() : m_other(open("/proc/thread-self/ns/net", O_RDONLY | O_CLOEXEC)) {
  m_isThere = m_other >= 0 && unshare(CLONE_NEWNET) == 0;
  if (m_isThere) {
    Mend();
  }
}

PrivateNetwork::~PrivateNetwork() {
  if (m_isThere) {
    setns(m_other, CLONE_NEWNET);
  }
  close(m_other);
}

void PrivateNetwork::Switch(bool on) const {
  ifreq request = {};
  std::strncpy(request.ifr_name, "lo", sizeof(request.ifr_name) - 1);
  const int any = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  bool isDone = ioctl(any, SIOCGIFFLAGS, &request) == 0;
  request.ifr_flags = static_cast<short>(on ? request.ifr_flags | IFF_UP : request.ifr_flags & ~IFF_UP);
  isDone = isDone && ioctl(any, SIOCSIFFLAGS, &request) == 0;
  close(any);
  if (!isDone) {
    throw std::runtime_error("the network can't be switched");
  }
}

}  // namespace support
