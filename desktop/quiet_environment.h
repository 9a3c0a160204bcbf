#pragma once

#include "desktop/programs.h"
#include "model/environment.h"

namespace zentro {

/// What a run over programs that are being edited needs from outside. It must not interrupt the
/// user: a missing file counts as such, and boxes are for the compile that the user asks for.
class QuietPrompts : public Prompts {
  public:
    void ShowMessage(std::string_view) override {}
    std::optional<std::string> FindMissingFile(std::string_view, std::string_view,
                                               std::string_view) override {
        return std::nullopt;
    }
};

class NoProgress : public Progress {
  public:
    void LetEventsRun() override {}
};

/// The revisions of all open texts, by the key of the file.
std::map<QString, Revision> OpenTexts(const Programs& programs);

}  // namespace zentro
