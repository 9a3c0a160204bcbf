#pragma once

#include <QString>
#include <vector>

namespace zentro {

/// A program to begin with.
struct ExampleProgram {
    QString path;
    QString name;   ///< of its file, without the extension: "line_follower"
    QString title;  ///< "Line follower"
};

/// Those of the program's own folder, by their names. Reads none of them.
std::vector<ExampleProgram> ExamplesIn(const QString& folder);

/// What a source says first of the program in the comment at its head, behind the title: one
/// sentence. Empty: there is no such comment.
QString FirstSentence(const QString& source);

}  // namespace zentro
