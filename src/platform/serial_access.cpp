#include "platform/serial_access.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <vector>

namespace gc40 {

std::optional<DeviceAccess> deviceAccess(const std::filesystem::path& device) {
  struct stat status {};
  if (::stat(device.c_str(), &status) != 0) return std::nullopt;
  // A device this process may use failed for some other reason (a lock file).
  if (::faccessat(AT_FDCWD, device.c_str(), R_OK | W_OK, AT_EACCESS) == 0) return std::nullopt;
  DeviceAccess access;
  const group* owner = ::getgrgid(status.st_gid);
  access.group = owner ? owner->gr_name : std::to_string(status.st_gid);
  access.groupMayReadWrite = (status.st_mode & (S_IRGRP | S_IWGRP)) == (S_IRGRP | S_IWGRP);
  const passwd* user = ::getpwuid(::geteuid());
  access.user = user ? user->pw_name : std::to_string(::geteuid());

  std::vector<gid_t> groups(std::size_t(std::max(::getgroups(0, nullptr), 0)));
  groups.resize(std::size_t(std::max(::getgroups(int(groups.size()), groups.data()), 0)));
  access.processInGroup = ::getegid() == status.st_gid ||
                          std::find(groups.begin(), groups.end(), status.st_gid) != groups.end();
  if (user) {
    int count = 0;
    ::getgrouplist(user->pw_name, user->pw_gid, nullptr, &count);
    std::vector<gid_t> memberOf(std::size_t(std::max(count, 0)));
    if (::getgrouplist(user->pw_name, user->pw_gid, memberOf.data(), &count) >= 0)
      access.userInGroup =
          std::find(memberOf.begin(), memberOf.end(), status.st_gid) != memberOf.end();
  }
  return access;
}

std::string deviceAccessAdvice(const std::filesystem::path& device, const DeviceAccess& access) {
  const std::string path = device.string();
  if (!access.groupMayReadWrite || access.processInGroup) {
    return path + " belongs to the group " + access.group +
           ", which may not read and write it: a udev rule can give the group access, "
           "e.g. MODE=\"0660\".";
  }
  if (access.userInGroup) {
    return access.user + " is in the group " + access.group + " that owns " + path +
           ", but not yet in this login: log out and in again (or run: newgrp " + access.group +
           ").";
  }
  return access.user + " may not use " + path + ", which belongs to the group " + access.group +
         ". Join the group with: sudo usermod -aG " + access.group + " " + access.user +
         ", then log out and in again.";
}

}  // namespace gc40
