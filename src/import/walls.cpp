#include "import/walls.h"

#include <seccomp.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <memory>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr rlim_t kMostSeconds = 300; // of the processor

struct ReleaseFilter {
    void operator()(void* filter) const { seccomp_release(filter); }
};
using Filter = std::unique_ptr<void, ReleaseFilter>;

void limit(__rlimit_resource resource, rlim_t value) {
    const rlimit bound{value, value};
    setrlimit(resource, &bound);
}

void limitResources(std::uint64_t mostMemory) {
#if !defined(__SANITIZE_ADDRESS__) // which reserves terabytes of addresses
    limit(RLIMIT_AS, mostMemory);
    limit(RLIMIT_DATA, mostMemory);
#else
    (void)mostMemory;
#endif
    limit(RLIMIT_CPU, kMostSeconds);
    limit(RLIMIT_FSIZE, 0);
    limit(RLIMIT_NPROC, 0);
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_NOFILE, 0); // what is open stays so
}

/// What a reader that works needs: its descriptors, its memory, its end. Everything else fails as if it were
/// not permitted, and does not end the process: libraries ask the system for this and that which they can do
/// without, and a file would turn unreadable by the next version of one of them.
bool allowWork(scmp_filter_ctx filter) {
    constexpr std::array always{SCMP_SYS(read),          SCMP_SYS(pread64),         SCMP_SYS(lseek),
                                SCMP_SYS(munmap),        SCMP_SYS(mremap),          SCMP_SYS(brk),
                                SCMP_SYS(madvise),       SCMP_SYS(futex),           SCMP_SYS(exit),
                                SCMP_SYS(exit_group),    SCMP_SYS(rt_sigreturn),    SCMP_SYS(rt_sigprocmask),
                                SCMP_SYS(clock_gettime), SCMP_SYS(gettimeofday),    SCMP_SYS(getrandom),
                                SCMP_SYS(sched_yield),   SCMP_SYS(restart_syscall), SCMP_SYS(sigaltstack)};
    bool added = true;
    for (const int call : always)
        added = seccomp_rule_add(filter, SCMP_ACT_ALLOW, call, 0) == 0 && added;
    const auto onlyWhere = [&](int call, const auto&... conditions) {
        added = seccomp_rule_add(filter, SCMP_ACT_ALLOW, call, sizeof...(conditions), conditions...) == 0 &&
                added;
    };
    const scmp_arg_cmp noCode = SCMP_A2(SCMP_CMP_MASKED_EQ, PROT_EXEC, 0);
    const scmp_arg_cmp ownCopy = SCMP_A3(SCMP_CMP_MASKED_EQ, MAP_SHARED, 0);
    onlyWhere(SCMP_SYS(mmap), noCode, ownCopy);
    onlyWhere(SCMP_SYS(mprotect), noCode);
    onlyWhere(SCMP_SYS(write), SCMP_A0(SCMP_CMP_EQ, STDOUT_FILENO));
    return added;
}

} // namespace

bool raiseWalls(std::uint64_t mostMemory) {
    limitResources(mostMemory);
    prctl(PR_SET_DUMPABLE, 0, 0, 0, 0);
    const Filter filter(seccomp_init(SCMP_ACT_ERRNO(EPERM)));
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && filter && allowWork(filter.get()) &&
           seccomp_load(filter.get()) == 0;
}
