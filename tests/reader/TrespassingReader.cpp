#include "reader/Confinement.h"

#include <QByteArray>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

#include <vector>

/// Confines itself as kel-lector does and then does what its argument says. What it gets done ends it with 0.
int main(int count, char** arguments) {
  const reader::MappedFile file = reader::MapAndConfine();
  if (file.bytes == nullptr || count < 2) {
    _exit(9);
  }
  const QByteArrayView deed(arguments[1]);
  if (deed == "read") {
    _exit(write(STDOUT_FILENO, file.bytes, file.size) == ssize_t(file.size) ? 0 : 8);
  } else if (deed == "open") {
    open("/etc/passwd", O_RDONLY);
  } else if (deed == "socket") {
    socket(AF_INET, SOCK_STREAM, 0);
  } else if (deed == "fork") {
    fork();
  } else if (deed == "kill") {
    kill(getppid(), 0);
  } else if (deed == "exec") {
    execl("/bin/true", "true", nullptr);
  } else if (deed == "memory") {
    // Throws where no more is to be had.
    std::vector<QByteArray> kept;
    for (int i = 0; i < 1000; ++i) {
      kept.emplace_back(1 << 20, 'x');
    }
  }
  _exit(0);
}
