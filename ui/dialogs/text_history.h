#pragma once

#include <QStringList>

namespace zentro {

/// The texts that were last used, the newest first, each once.
class TextHistory {
  public:
    static constexpr qsizetype kMost = 20;

    void Add(const QString& text);
    const QStringList& Texts() const { return texts_; }

  private:
    QStringList texts_;
};

}  // namespace zentro
