#pragma once
// Linux only. As root, file permissions are not checked unless these capabilities are
// dropped; they are dropped for this thread only and given back afterwards, so a test can see
// what a read-only folder does.
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tovel::test {

class clsWithoutPermissionOverride {
public:
    clsWithoutPermissionOverride() {
        if (geteuid() != 0) return;
        header_.version = _LINUX_CAPABILITY_VERSION_3;
        header_.pid = 0;
        if (syscall(SYS_capget, &header_, saved_) != 0) return;
        __user_cap_data_struct reduced[2] = {saved_[0], saved_[1]};
        reduced[0].effective &= ~((1u << CAP_DAC_OVERRIDE) | (1u << CAP_DAC_READ_SEARCH) | (1u << CAP_FOWNER));
        active_ = syscall(SYS_capset, &header_, reduced) == 0;
    }
    ~clsWithoutPermissionOverride() {
        if (active_) syscall(SYS_capset, &header_, saved_);
    }
    clsWithoutPermissionOverride(const clsWithoutPermissionOverride&) = delete;
    clsWithoutPermissionOverride& operator=(const clsWithoutPermissionOverride&) = delete;

private:
    __user_cap_header_struct header_{};
    __user_cap_data_struct saved_[2]{};
    bool active_ = false;
};

} // namespace tovel::test
