#include "desktop/session_lock.h"

#include <QFile>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace zentro {

#ifdef Q_OS_UNIX

bool SessionLock::Acquire(const QString& path) {
    Release();
    descriptor_ =
        open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    struct stat status {};
    // Somebody who tidies up may have removed the file before it was locked.
    const bool locked = descriptor_ >= 0 && flock(descriptor_, LOCK_EX | LOCK_NB) == 0 &&
                        fstat(descriptor_, &status) == 0 && status.st_nlink > 0;
    if (!locked) Release();
    return locked;
}

void SessionLock::Release() {
    if (descriptor_ >= 0) close(descriptor_);
    descriptor_ = -1;
}

#else

bool SessionLock::Acquire(const QString& path) {
    Release();
    file_ = std::make_unique<QLockFile>(path);
    file_->setStaleLockTime(0);
    if (file_->tryLock(0)) return true;
    Release();
    return false;
}

void SessionLock::Release() {
    file_.reset();
}

#endif

}  // namespace zentro
