#include "runner/stress/children.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <deque>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

namespace run::stress {

namespace {

/// A child process that has not been waited for.
struct Child {
    int number = 0;
    pid_t pid = -1;
    int answer = -1;            ///< the pipe's end for reading
    std::FILE* said = nullptr;  ///< its standard error
    QElapsedTimer since;
};

void writeAll(int file, const QByteArray& text) {
    for (qint64 done = 0; done < text.size();) {
        const ssize_t written = ::write(file, text.constData() + done, std::size_t(text.size() - done));
        if (written < 0 && errno != EINTR) {
            return;
        }
        done += std::max<ssize_t>(0, written);
    }
}

/// Never returns: runs the job in the child and ends it, without what the parent does at its end.
[[noreturn]] void runJob(const Child& child, int answer, const std::function<QByteArray(int)>& job) {
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    ::dup2(nowhere, STDOUT_FILENO);
    if (child.said) {
        ::dup2(::fileno(child.said), STDERR_FILENO);
    }
    writeAll(answer, job(child.number));
    ::_exit(EXIT_SUCCESS);
}

Child spawn(int number, const std::function<QByteArray(int)>& job) {
    Child child;
    child.number = number;
    int ends[2] = {-1, -1};
    std::fflush(nullptr);
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return child;
    }
    child.said = std::tmpfile();
    child.since.start();
    child.pid = ::fork();
    if (child.pid == 0) {
        ::close(ends[0]);
        runJob(child, ends[1], job);
    }
    ::close(ends[1]);
    child.answer = ends[0];
    return child;
}

/// What the child writes until it ends; false when it takes longer than `limitMs`.
bool readAnswer(const Child& child, int limitMs, QByteArray* text) {
    constexpr int blockSize = 65536;
    QByteArray block(blockSize, Qt::Uninitialized);
    for (;;) {
        const qint64 left = limitMs - child.since.elapsed();
        pollfd wait = {child.answer, POLLIN, 0};
        if (left <= 0 || ::poll(&wait, 1, int(left)) == 0) {
            return false;
        }
        const ssize_t count = ::read(child.answer, block.data(), std::size_t(block.size()));
        if (count == 0 || (count < 0 && errno != EINTR)) {
            return true;
        }
        text->append(block.constData(), int(std::max<ssize_t>(0, count)));
    }
}

/// The line in which a sanitizer sums up, if the child wrote one.
QString summaryOf(std::FILE* said) {
    QByteArray line(1024, '\0');
    std::rewind(said);
    while (std::fgets(line.data(), line.size(), said)) {
        if (line.startsWith("SUMMARY: ")) {
            return QStringLiteral("; ") + QString::fromUtf8(line.constData()).trimmed();
        }
    }
    return {};
}

Answer collect(const Child& child, int limitMs) {
    Answer answer;
    if (child.pid < 0) {
        answer.death = QStringLiteral("the process cannot be started");
        return answer;
    }
    const bool ends = readAnswer(child, limitMs, &answer.text);
    if (!ends) {
        ::kill(child.pid, SIGKILL);
        answer.death = QStringLiteral("the process hangs");
    }
    int status = 0;
    while (::waitpid(child.pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (ends && WIFSIGNALED(status)) {
        answer.death = QStringLiteral("the process died of signal %1").arg(WTERMSIG(status));
    } else if (ends && WEXITSTATUS(status) != 0) {
        answer.death = QStringLiteral("the process ended with %1").arg(WEXITSTATUS(status));
    }
    if (!answer.death.isEmpty() && child.said) {
        answer.death += summaryOf(child.said);
    }
    return answer;
}

}  // namespace

void Children::run(int count, const std::function<QByteArray(int)>& job,
                   const std::function<void(int, const Answer&)>& take) const {
    std::deque<Child> running;
    int next = 0;
    while (next < count || !running.empty()) {
        while (next < count && int(running.size()) < atOnce_) {
            running.push_back(spawn(next++, job));
        }
        const Child child = running.front();
        running.pop_front();
        const Answer answer = collect(child, limitMs_);
        if (child.said) {
            std::fclose(child.said);
        }
        if (child.answer >= 0) {
            ::close(child.answer);
        }
        take(child.number, answer);
    }
}

}  // namespace run::stress
