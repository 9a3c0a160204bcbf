#pragma once

#include <QCoreApplication>
#include <QString>

#include "desktop/program_index.h"

namespace zentro {

/// A new name for a name of a program: whether it may be taken, and how the texts look then.
class Rename {
    Q_DECLARE_TR_FUNCTIONS(zentro::Rename)

  public:
    /// All of them outlive the object. The index is that of the program that begins with `root`,
    /// and the name is one of it. What is said holds for the texts that were indexed.
    Rename(const InstructionConfiguration& configuration, const SettingsStore& settings,
           const Programs& programs, const OpenFile& root, const ProgramIndex& index,
           const IndexedName& name);

    const IndexedName& Name() const { return name_; }

    /// Why the name cannot be taken, a sentence or two; empty: it can. The program means the same
    /// with it. The name that it has already can be taken in another spelling.
    QString ProblemWith(const QString& newName) const;

  private:
    QString ConflictWith(const QString& newName) const;
    QString ProblemOfTexts(const QString& newName) const;
    QString FirstError(const QString& newName) const;

    const InstructionConfiguration& configuration_;
    const SettingsStore& settings_;
    const Programs& programs_;
    const OpenFile& root_;
    const ProgramIndex& index_;
    const IndexedName& name_;
    bool compiles_ = false;  ///< as it stands
};

}  // namespace zentro
