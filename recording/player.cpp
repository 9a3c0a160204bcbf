#include "recording/player.h"

namespace zentro {

void Player::Start(Scene& scene) {
    if (!started_) StartProgram(scene.board);
    started_ = true;
}

void Player::BeginTick(Scene& scene, const Run& run) {
    while (!IsDone() && actions_[done_].tick <= scene.board.clock) {
        const Action& action = actions_[done_++];
        if (action.kind == ActionKind::Step) {
            Start(scene);
            run(action.value);
        } else if (action.kind == ActionKind::Pace) {
            pace_ = action.value;
        } else {
            CarryOut(scene, action);
        }
    }
    Start(scene);
}

}  // namespace zentro
