#include "tests/comms/played_board.h"

#include <utility>

namespace zentro {

PlayedBoard::PlayedBoard(std::map<std::string, std::string> answers, std::vector<Deed> deeds)
    : answers_(std::move(answers)), deeds_(std::move(deeds)) {
    answers_.try_emplace("W", "Kinetron\r\n");
    board_.answer = [this](const std::string& received) {
        for (const char character : received)
            Take(character);
        if (!timer_.isActive()) MakeMoves();
        return std::string();
    };
    timer_.setSingleShot(true);
    QObject::connect(&timer_, &QTimer::timeout, [this] {
        moves_.front().late = {};
        MakeMoves();
    });
}

void PlayedBoard::Take(char character) {
    if (loading_) {
        if (character != ']') return;
        loading_ = false;
        DoStep("end", "\r\n");
    } else if (character == 'L' && line_.empty()) {
        loading_ = true;
        DoStep("L", "L");
    } else if (character == '\r') {
        const std::string line = std::exchange(line_, {});
        DoStep(line, line + "\r\n");
    } else if (character >= ' ') {
        line_ += character;
    }
}

void PlayedBoard::DoStep(const std::string& step, std::string echo) {
    const auto known = answers_.find(step);
    Move answer{{}, known == answers_.end() ? "" : known->second};
    Move first{{}, std::move(echo)};
    std::string after;
    bool cutsBefore = false;
    bool cutsBetween = false;
    bool cutsAfter = false;
    for (const Deed& deed : deeds_) {
        if (deed.step != step) continue;
        switch (deed.kind) {
            case Deed::Kind::EchoLate: first.late = deed.late; break;
            case Deed::Kind::AnswerLate: answer.late = deed.late; break;
            case Deed::Kind::Mute: return;
            case Deed::Kind::NoEcho: first.text.clear(); break;
            case Deed::Kind::Instead: answer.text = deed.text; break;
            case Deed::Kind::Before: first.text.insert(0, deed.text); break;
            case Deed::Kind::After: after = deed.text; break;
            case Deed::Kind::Twice: after = first.text + answer.text; break;
            case Deed::Kind::CutBefore: cutsBefore = true; break;
            case Deed::Kind::CutBetween: cutsBetween = true; break;
            case Deed::Kind::CutAfter: cutsAfter = true; break;
        }
    }
    // What was sent has to arrive before the cable is pulled.
    const Move cut{std::chrono::milliseconds(200), "", true};
    if (cutsBefore) return Queue(cut);
    Queue(first);
    if (cutsBetween) return Queue(cut);
    answer.text += after;
    Queue(answer);
    if (cutsAfter) Queue(cut);
}

void PlayedBoard::MakeMoves() {
    while (!moves_.empty() && moves_.front().late.count() == 0) {
        const Move move = std::move(moves_.front());
        moves_.pop_front();
        if (move.cuts) return board_.HangUp();
        board_.Send(move.text);
    }
    if (!moves_.empty()) timer_.start(moves_.front().late);
}

}  // namespace zentro
