#pragma once

#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "support/temporary_folder.h"

namespace velk::test {

/// A disk of its own that is soon full, for whoever may mount one; it goes with the scope.
class SmallDisk {
 public:
  /// "tmpfs", or "ext4" in blocks of 1 KiB, fewer than a page of memory has.
  explicit SmallDisk(const std::string& kind) {
    if (kind == "tmpfs") {
      mounted_ = mount("none", Path().c_str(), "tmpfs", 0, "size=1m") == 0;
      return;
    }
    const std::string image = "'" + image_.File("image") + "'";
    mounted_ = Runs("truncate -s 4M " + image) && Runs("PATH=$PATH:/sbin:/usr/sbin mkfs.ext4 -q -F -b 1024 " + image) &&
               Runs("mount -o loop " + image + " '" + Path() + "'");
  }
  ~SmallDisk() {
    if (mounted_) umount2(Path().c_str(), MNT_DETACH);
  }
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

  bool IsMounted() const { return mounted_; }
  std::string Path() const { return folder_.Path().string(); }
  std::string File(const std::string& name) const { return folder_.File(name); }

  /// Leaves not a byte free.
  void Fill() const {
    const int descriptor = open(File("ballast").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    const std::string block(65536, 'x');
    for (std::size_t size = block.size(); size > 0; size /= 2)
      while (write(descriptor, block.data(), size) > 0) {
      }
    fsync(descriptor);
    close(descriptor);
  }
  void Empty() const { unlink(File("ballast").c_str()); }

 private:
  static bool Runs(const std::string& command) { return std::system((command + " >/dev/null 2>&1").c_str()) == 0; }

  TemporaryFolder image_;
  TemporaryFolder folder_;
  bool mounted_ = false;
};

}  // namespace velk::test
