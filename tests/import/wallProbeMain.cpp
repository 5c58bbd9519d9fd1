// Tries to get out from behind the walls of the reader program, and says of each way what came of it:
// wallProbe FILE [USER]. FILE is one that may be read and written; as that user, where one is given.
#include "import/walls.h"

#include <arpa/inet.h>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <grp.h>
#include <linux/io_uring.h>
#include <sched.h>
#include <string>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// Behind the walls there is standard output alone to speak by. What another wall than the list of calls
/// holds up, a limit say, is no refusal: each must hold by itself.
void say(const char* way, long result) {
    const char* said = result >= 0 ? ": DONE\n" : errno == EPERM ? ": refused\n" : ": held up\n";
    const std::string line = std::string(way) + said;
    if (::write(STDOUT_FILENO, line.data(), line.size()) < 0)
        std::_Exit(3);
}

int connected() {
    const int caller = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(9);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (caller >= 0)
        ::connect(caller, reinterpret_cast<sockaddr*>(&address), sizeof address);
    return caller;
}

long forked() {
    const pid_t child = ::fork();
    if (child == 0)
        std::_Exit(0);
    return child;
}

long executed() {
    char program[] = "/bin/true";
    char* const words[] = {program, nullptr};
    char* const none[] = {nullptr};
    return ::execve(program, words, none); // it does not come back from a success
}

void tryFiles(const char* path, int opened) {
    say("open a file", ::open(path, O_RDONLY));
    say("open by openat", ::syscall(SYS_openat, AT_FDCWD, path, O_RDONLY));
    say("open by openat2", ::syscall(SYS_openat2, AT_FDCWD, path, nullptr, 0));
    say("open for writing", ::open(path, O_WRONLY));
    say("make a file", ::open((std::string(path) + ".new").c_str(), O_CREAT | O_WRONLY, 0600));
    say("write to an open file", ::write(opened, "x", 1));
    say("write to it at a place", ::pwrite(opened, "x", 1, 0));
    say("cut it", ::ftruncate(opened, 0));
    say("map it for writing", mmap(nullptr, 1, PROT_WRITE, MAP_SHARED, opened, 0) == MAP_FAILED ? -1 : 0);
    say("write to the error channel", ::write(STDERR_FILENO, "x", 1));
    say("remove a file", ::unlink(path));
    say("rename a file", ::rename(path, "/tmp/x"));
    say("look at a file", ::syscall(SYS_newfstatat, AT_FDCWD, path, nullptr, 0));
    say("list a folder", ::syscall(SYS_getdents64, opened, nullptr, 0));
    say("change a mode", ::fchmod(opened, 0777));
    say("double a descriptor", ::dup(opened));
}

void tryNetwork(int connection) {
    say("make a socket", ::socket(AF_INET, SOCK_STREAM, 0));
    say("make a local socket", ::socket(AF_UNIX, SOCK_STREAM, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    say("connect", ::connect(connection, reinterpret_cast<sockaddr*>(&address), sizeof address));
    say("send", ::sendto(connection, "x", 1, 0, nullptr, 0));
    say("use a ring", ::syscall(SYS_io_uring_setup, 1, nullptr));
}

void tryProcesses(pid_t other) {
    say("start a process", forked());
    say("start one by clone", ::syscall(SYS_clone, SIGCHLD, nullptr, nullptr, nullptr, nullptr));
    say("start one by clone3", ::syscall(SYS_clone3, nullptr, 0));
    say("start one by vfork", ::syscall(SYS_vfork));
    say("trace another process", ::ptrace(PTRACE_ATTACH, other, nullptr, nullptr));
    say("be traced", ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr));
    char seen = 0;
    const iovec here{&seen, 1};
    const iovec there{&seen, 1};
    say("read another process", ::syscall(SYS_process_vm_readv, other, &here, 1, &there, 1, 0));
    say("signal another process", ::kill(other, 0));
    say("take a descriptor of it", ::syscall(SYS_pidfd_open, other, 0));
}

void trySettings() {
    say("become another user", ::syscall(SYS_setuid, 0));
    say("raise a limit", ::syscall(SYS_prlimit64, 0, 0, nullptr, nullptr));
    say("change its settings", ::prctl(PR_SET_DUMPABLE, 1, 0, 0, 0));
    say("make memory for code",
        mmap(nullptr, 4096, PROT_READ | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) == MAP_FAILED ? -1
                                                                                                     : 0);
    void* page = mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    say("turn memory into code", ::mprotect(page, 4096, PROT_READ | PROT_EXEC));
    say("take down a wall", ::syscall(SYS_seccomp, 0, 0, nullptr));
    say("leave for another space", ::unshare(CLONE_NEWUSER));
    say("mount", ::syscall(SYS_mount, "a", "/tmp", "tmpfs", 0, nullptr));
}

} // namespace

int main(int argc, char** argv) {
    const pid_t other = ::getppid();
    const uid_t user = argc > 2 ? uid_t(std::atoi(argv[2])) : ::getuid();
    const int opened = ::open(argv[1], O_RDWR);
    if (argc < 2 || opened < 0)
        return 2;
    if (user != ::getuid() && (::setgroups(0, nullptr) != 0 || ::setgid(user) != 0 || ::setuid(user) != 0))
        return 2;
    const int connection = connected();
    if (!raiseWalls(std::uint64_t(1) << 30))
        return 4;
    char sign = 0;
    if (::pread(opened, &sign, 1, 0) != 1) // what readers live by
        return 2;
    tryFiles(argv[1], opened);
    tryNetwork(connection);
    tryProcesses(other);
    trySettings();
    say("run another program", executed());
    while (::read(STDIN_FILENO, &sign, 1) > 0) // until nobody wants to look at it any longer
        ;
    std::_Exit(0);
}
