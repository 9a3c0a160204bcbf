#include "ui/board/goals_label.h"

#include <QCoreApplication>
#include <QStringList>
#include <algorithm>

#include "world/goals.h"

namespace zentro {

namespace {

QString Seconds(std::uint64_t ticks) {
    return QString::number(static_cast<double>(ticks) / kTicksPerSecond, 'f', 1);
}

/// `end` is when the program ended, if it did: time alone misses nothing from then on.
QString StatusWords(const world::GoalState& goal, std::uint64_t now,
                    const std::optional<std::uint64_t>& end) {
    if (end && goal.status == world::GoalStatus::Missed && goal.tick >= *end)
        return GoalsLabel::tr("not met yet, the program has ended");
    switch (goal.status) {
        case world::GoalStatus::Met:
            return GoalsLabel::tr("✔ met after %1 s").arg(Seconds(goal.tick));
        case world::GoalStatus::Missed:
            return GoalsLabel::tr("✘ missed after %1 s").arg(Seconds(goal.tick));
        case world::GoalStatus::Open: break;
    }
    if (end) return GoalsLabel::tr("not met yet, the program has ended");
    return now < kTicksPerSecond ? GoalsLabel::tr("open")
                                 : GoalsLabel::tr("open, %1 s").arg(now / kTicksPerSecond);
}

}  // namespace

QString GoalWords(const world::Goal& goal) {
    const QString target = QString::fromStdString(goal.target);
    const QString seconds = QString::number(goal.seconds);
    switch (goal.kind) {
        case world::GoalKind::Reach:
            return goal.stand > 0
                       ? GoalsLabel::tr("Reach \"%1\" and stand there for %2 s, within %3 s")
                             .arg(target, QString::number(goal.stand), seconds)
                       : GoalsLabel::tr("Reach \"%1\" within %2 s").arg(target, seconds);
        case world::GoalKind::Follow:
            return GoalsLabel::tr("Follow \"%1\" within %2 s").arg(target, seconds);
        case world::GoalKind::Clear: break;
    }
    return GoalsLabel::tr("Touch nothing for %1 s").arg(seconds);
}

GoalsLabel::GoalsLabel(QWidget* parent) : QLabel(parent) {
    setObjectName("Goals");
    setWordWrap(true);
    setToolTip(tr("What is to be reached in this world; the time counts from the robot's start"));
}

void GoalsLabel::Show(const Scene& scene, bool isOver) {
    if (!isOver) end_.reset();
    if (isOver && !end_) end_ = scene.state.tick;
    world::WorldState ended = scene.state;
    if (isOver) EndGoals(*scene.map, ended);
    QStringList lines;
    for (std::size_t index = 0; index < ended.goals.size(); ++index) {
        // What was only to be kept is met; of the rest it is told how it came to be missed.
        const bool isMet = ended.goals[index].status == world::GoalStatus::Met;
        const world::GoalState& goal = isMet ? ended.goals[index] : scene.state.goals[index];
        lines += tr("Task in this world: %1 – %2")
                     .arg(GoalWords(scene.map->world.goals[index]),
                          StatusWords(goal, scene.state.tick, end_));
    }
    const QString text = lines.join('\n');
    if (text == this->text()) return;
    setText(text);
    FitHeight();
}

void GoalsLabel::FitHeight() {
    setMinimumHeight(std::max(0, heightForWidth(width())));
}

void GoalsLabel::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    FitHeight();
}

}  // namespace zentro
