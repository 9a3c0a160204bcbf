#pragma once

#include <QWidget>
#include <array>
#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "desktop/used_inputs.h"
#include "recording/scene.h"

class QCheckBox;
class QGridLayout;
class QLabel;
class QLayout;
class QPushButton;
class QSlider;
class QSpinBox;
class QToolButton;

namespace zentro {

class FeedButton;
class StickWidget;

/// Everything that can be done to the board's inputs.
class InputsPanel : public QWidget {
    Q_OBJECT

  public:
    /// Changes inputs.
    using Edit = std::function<void(Inputs&)>;

    explicit InputsPanel(QWidget* parent);

    /// Folds away what the program does not use, until the user wants all. Nothing: it is not
    /// known.
    void ShowUsed(const std::optional<InputUse>& used);

    /// Shows inputs without Edited.
    void Show(const Scene& scene);

  signals:
    /// The user has done something to the inputs.
    void Edited(const zentro::InputsPanel::Edit& edit);
    void ButtonPressed(std::size_t button);
    void ButtonLetGo(std::size_t button);
    /// An input that the robot feeds is to be held by hand, or let go.
    void HoldWanted(const zentro::world::InputId& input, bool held);
    void AllLetGo();
    /// Other groups of inputs are seen than before.
    void Folded();

  private:
    void Fold();
    QLayout* MakeButtons();
    QLayout* MakeDigital();
    QLayout* MakeAnalog();
    QSpinBox* MakeAnalogValue(std::size_t index);
    void AddFeedRow(QGridLayout* grid, int row, world::InputKind kind, std::size_t count,
                    const QString& name, int firstColumn = 0);
    void ShowFeeding(const Scene& scene);
    QLayout* MakeSticks();
    QLayout* MakePulses();
    QLayout* MakeRest();
    QWidget* MakeFolding();
    void LetButtonsStay(bool stay);
    void NameButtons();

    std::map<InputGroup, QWidget*> groups_;
    std::optional<InputUse> used_;
    QToolButton* all_ = nullptr;
    QLabel* noneUsed_ = nullptr;
    QLabel* usedButtons_ = nullptr;
    QCheckBox* buttonsStay_ = nullptr;
    QPushButton* letAllGo_ = nullptr;
    std::vector<FeedButton*> feeds_;
    std::array<QPushButton*, 6> buttons_{};
    std::array<QPushButton*, 4> digital_{};
    std::array<QSlider*, 6> analog_{};
    std::array<QSpinBox*, 6> analogValues_{};
    std::array<StickWidget*, 2> sticks_{};
    std::array<QLabel*, 2> stickValues_{};
    std::array<QSpinBox*, 4> timed_{};
    std::array<QPushButton*, 4> pulses_{};
    QSpinBox* battery_ = nullptr;
    QSpinBox* program_ = nullptr;
};

}  // namespace zentro
