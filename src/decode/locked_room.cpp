#include "decode/locked_room.h"

#include "platform/foundation/file_descriptor.h"
#include "platform/images/decode_wish.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <malloc.h>
#include <memory>
#include <sched.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace zelkam {

namespace {

bool limit(__rlimit_resource resource, rlim_t most)
{
    const rlimit both{most, most};
    return ::setrlimit(resource, &both) == 0;
}

bool limitResources()
{
    // Every thread's heap would reserve a part of the address space for itself.
    ::mallopt(M_ARENA_MAX, 1);
    constexpr rlim_t largestFile = 1 << 30;
    constexpr rlim_t longestLife =
        10 * 60; // of the processor, in seconds: the application ends it before
    constexpr rlim_t mostFiles = 64;
    bool isLimited = limit(RLIMIT_CORE, 0) && limit(RLIMIT_FSIZE, largestFile) &&
                     limit(RLIMIT_CPU, longestLife) && limit(RLIMIT_NOFILE, mostFiles);
#ifndef ZELKAM_HAS_SANITIZER                 // which reserves terabytes
    constexpr rlim_t mostMemory = 1UL << 31; // a photo of 200 megapixels, while it is turned
    isLimited = limit(RLIMIT_AS, mostMemory) && isLimited;
#endif
    return isLimited;
}

/// Files can be read where fonts lie, and nothing else can be done with any file that is not open
/// already (landlock(7)).
bool limitFiles()
{
    const auto version =
        ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1)
        return false;
    // Those of the first version: later ones are about what the filter of calls forbids.
    constexpr quint64 firstRights = (LANDLOCK_ACCESS_FS_MAKE_SYM << 1) - 1;
    landlock_ruleset_attr rules = {};
    rules.handled_access_fs = firstRights;
    const FileDescriptor set(int(::syscall(SYS_landlock_create_ruleset, &rules, sizeof rules, 0)));
    if (!set.isOpen())
        return false;
    for (const char *folder : {"/usr/share/fonts", "/usr/local/share/fonts",
                               "/var/cache/fontconfig", "/etc/fonts", "/usr/share/fontconfig"}) {
        const FileDescriptor opened(::open(folder, O_PATH | O_CLOEXEC));
        landlock_path_beneath_attr rule = {};
        rule.allowed_access = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
        rule.parent_fd = opened.get();
        if (opened.isOpen() &&
            ::syscall(SYS_landlock_add_rule, set.get(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0) != 0)
            return false;
    }
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::syscall(SYS_landlock_restrict_self, set.get(), 0) == 0;
}

struct FilterRelease
{
    void operator()(void *filter) const { seccomp_release(filter); }
};

/// What decoders call. All else fails, and what no decoder tries for a good reason ends the
/// process.
bool limitCalls(bool mayOpenFonts)
{
    const std::unique_ptr<void, FilterRelease> filter(seccomp_init(SCMP_ACT_ERRNO(EPERM)));
    if (!filter)
        return false;
    bool isComplete = true;
    const auto rule = [&](uint32_t action, int call, auto... conditions) {
        const scmp_arg_cmp all[] = {conditions..., scmp_arg_cmp{}};
        isComplete =
            seccomp_rule_add_array(filter.get(), action, call, sizeof...(conditions), all) == 0 &&
            isComplete;
    };
    for (const int call : {SCMP_SYS(read),
                           SCMP_SYS(pread64),
                           SCMP_SYS(write),
                           SCMP_SYS(sendmsg),
                           SCMP_SYS(recvmsg),
                           SCMP_SYS(poll),
                           SCMP_SYS(ppoll),
                           SCMP_SYS(close),
                           SCMP_SYS(lseek),
                           SCMP_SYS(fstat),
                           SCMP_SYS(munmap),
                           SCMP_SYS(mremap),
                           SCMP_SYS(brk),
                           SCMP_SYS(madvise),
                           SCMP_SYS(futex),
                           SCMP_SYS(set_robust_list),
                           SCMP_SYS(rseq),
                           SCMP_SYS(rt_sigprocmask),
                           SCMP_SYS(rt_sigaction),
                           SCMP_SYS(rt_sigreturn),
                           SCMP_SYS(sigaltstack),
                           SCMP_SYS(sched_yield),
                           SCMP_SYS(sched_getaffinity),
                           SCMP_SYS(clock_gettime),
                           SCMP_SYS(clock_nanosleep),
                           SCMP_SYS(nanosleep),
                           SCMP_SYS(gettimeofday),
                           SCMP_SYS(getpid),
                           SCMP_SYS(gettid),
                           SCMP_SYS(getrandom),
                           SCMP_SYS(sysinfo),
                           SCMP_SYS(uname),
                           SCMP_SYS(memfd_create),
                           SCMP_SYS(fcntl),
                           SCMP_SYS(exit),
                           SCMP_SYS(exit_group),
                           SCMP_SYS(restart_syscall),
                           SCMP_SYS(eventfd2),
                           SCMP_SYS(getrusage),
                           SCMP_SYS(membarrier)})
        rule(SCMP_ACT_ALLOW, call);
#ifdef ZELKAM_HAS_SANITIZER // which finds out with a pipe whether memory can be read
    for (const int call : {SCMP_SYS(pipe), SCMP_SYS(pipe2)})
        rule(SCMP_ACT_ALLOW, call);
#endif
    // Memory is for data: what a file could bring does not become a program.
    for (const int call : {SCMP_SYS(mmap), SCMP_SYS(mprotect)})
        rule(SCMP_ACT_ALLOW, call, SCMP_A2(SCMP_CMP_MASKED_EQ, PROT_EXEC, 0));
    // Threads, but no processes. The C library falls back to clone() where clone3() is missing, as
    // no filter can look into what that is given.
    rule(SCMP_ACT_ALLOW, SCMP_SYS(clone), SCMP_A0(SCMP_CMP_MASKED_EQ, CLONE_THREAD, CLONE_THREAD));
    rule(SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3));
    // abort() signals itself.
    rule(SCMP_ACT_ALLOW, SCMP_SYS(tgkill), SCMP_A0(SCMP_CMP_EQ, scmp_datum_t(::getpid())));
    if (mayOpenFonts) {
        for (const int call : {SCMP_SYS(open), SCMP_SYS(openat), SCMP_SYS(newfstatat),
                               SCMP_SYS(stat), SCMP_SYS(statx), SCMP_SYS(getdents64),
                               SCMP_SYS(access), SCMP_SYS(readlink), SCMP_SYS(fstatfs)})
            rule(SCMP_ACT_ALLOW, call);
    } else {
        rule(SCMP_ACT_ALLOW, SCMP_SYS(newfstatat),
             SCMP_A3(SCMP_CMP_MASKED_EQ, AT_EMPTY_PATH, AT_EMPTY_PATH));
    }
    for (const int call : {SCMP_SYS(socket),
                           SCMP_SYS(socketpair),
                           SCMP_SYS(connect),
                           SCMP_SYS(bind),
                           SCMP_SYS(listen),
                           SCMP_SYS(execve),
                           SCMP_SYS(execveat),
                           SCMP_SYS(fork),
                           SCMP_SYS(vfork),
                           SCMP_SYS(ptrace),
                           SCMP_SYS(process_vm_readv),
                           SCMP_SYS(process_vm_writev),
                           SCMP_SYS(kill),
                           SCMP_SYS(tkill),
                           SCMP_SYS(pidfd_open),
                           SCMP_SYS(pidfd_send_signal),
                           SCMP_SYS(mount),
                           SCMP_SYS(bpf),
                           SCMP_SYS(io_uring_setup),
                           SCMP_SYS(perf_event_open),
                           SCMP_SYS(unlink),
                           SCMP_SYS(unlinkat),
                           SCMP_SYS(rename),
                           SCMP_SYS(renameat),
                           SCMP_SYS(renameat2)})
        rule(SCMP_ACT_KILL_PROCESS, call);
    // For all threads: some may run already.
    return isComplete && seccomp_attr_set(filter.get(), SCMP_FLTATR_CTL_TSYNC, 1) == 0 &&
           seccomp_load(filter.get()) == 0;
}

} // namespace

qint64 lockRoom()
{
    qint64 lacks = 0;
    if (!limitResources())
        lacks |= DecodeReply::noMemoryLimit;
    const bool hasFileRules = limitFiles();
    if (!hasFileRules)
        lacks |= DecodeReply::noFileRules;
    if (!limitCalls(hasFileRules))
        lacks |= DecodeReply::noCallFilter;
    return lacks;
}

} // namespace zelkam
