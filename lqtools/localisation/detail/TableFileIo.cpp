#include "lqtools/localisation/detail/TableFileIo.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace lq::detail {

std::string TablePath(const char* path) {
  std::string result(path ? path : "");
  for (char& c : result)
    if (c == '\\') c = '/';
  return result;
}

int OpenTableFile(const char* path) {
  if (!path) return -1;
  int handle;
  do {
    handle = ::open(TablePath(path).c_str(), O_RDONLY | O_CLOEXEC);
  } while (handle == -1 && errno == EINTR);
  return handle;
}

void CloseTableFile(int handle) {
  if (handle != -1) ::close(handle);
}

std::size_t ReadBlock(int handle, void* buffer, std::size_t size) {
  auto* out = static_cast<unsigned char*>(buffer);
  std::size_t done = 0;
  while (done < size) {
    const ssize_t n = ::read(handle, out + done, size - done);
    if (n > 0) {
      done += static_cast<std::size_t>(n);
    } else if (n == 0 || errno != EINTR) {
      break;
    }
  }
  return done;
}

std::size_t ReadBlockAt(int handle, void* buffer, std::size_t size, uint64_t offset) {
  auto* out = static_cast<unsigned char*>(buffer);
  std::size_t done = 0;
  while (done < size) {
    const ssize_t n = ::pread(handle, out + done, size - done, static_cast<off_t>(offset + done));
    if (n > 0) {
      done += static_cast<std::size_t>(n);
    } else if (n == 0 || errno != EINTR) {
      break;
    }
  }
  return done;
}

}  // namespace lq::detail
