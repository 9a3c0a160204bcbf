#pragma once

#include <QString>
#include <QtGlobal>

#ifndef Q_OS_UNIX
#include <QLockFile>
#include <memory>
#endif

namespace zentro {

/// A file that one running program holds. It is free again when that program has ended, however
/// that came about.
class SessionLock {
  public:
    SessionLock() = default;
    ~SessionLock() { Release(); }
    SessionLock(const SessionLock&) = delete;
    SessionLock& operator=(const SessionLock&) = delete;

    /// Creates the file where there is none. False when somebody holds it or it cannot be made.
    bool Acquire(const QString& path);
    void Release();

  private:
#ifdef Q_OS_UNIX
    int descriptor_ = -1;
#else
    std::unique_ptr<QLockFile> file_;
#endif
};

}  // namespace zentro
