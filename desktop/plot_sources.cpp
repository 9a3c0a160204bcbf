#include "desktop/plot_sources.h"

#include <QCoreApplication>
#include <algorithm>
#include <tuple>

#include "comms/debug_variables.h"
#include "config/text.h"
#include "model/symbol.h"

namespace zentro {

namespace {

struct SourceTexts {
    Q_DECLARE_TR_FUNCTIONS(zentro::PlotSources)
};

/// Inputs or outputs of one kind. A count of 0 stands for one whose name has no number.
struct KindRow {
    PlotGroup group;
    PlotKind kind;
    std::size_t count;
    const char* name;
};

constexpr KindRow kKinds[] = {
    {PlotGroup::Inputs, PlotKind::Analog, std::tuple_size_v<decltype(Inputs::analog)>,
     QT_TRANSLATE_NOOP("zentro::PlotSources", "Analogue input %1")},
    {PlotGroup::Inputs, PlotKind::Digital, std::tuple_size_v<decltype(Inputs::digital)>,
     QT_TRANSLATE_NOOP("zentro::PlotSources", "Digital input %1")},
    {PlotGroup::Inputs, PlotKind::Button, std::tuple_size_v<decltype(Inputs::buttons)>,
     QT_TRANSLATE_NOOP("zentro::PlotSources", "Button %1")},
    {PlotGroup::Inputs, PlotKind::StickX, std::tuple_size_v<decltype(Inputs::joysticks)>,
     QT_TRANSLATE_NOOP("zentro::PlotSources", "Joystick %1 x")},
    {PlotGroup::Inputs, PlotKind::StickY, std::tuple_size_v<decltype(Inputs::joysticks)>,
     QT_TRANSLATE_NOOP("zentro::PlotSources", "Joystick %1 y")},
    {PlotGroup::Inputs, PlotKind::Pulses, std::tuple_size_v<decltype(Inputs::pulses)>,
     QT_TRANSLATE_NOOP("zentro::PlotSources", "Pulses on input %1")},
    {PlotGroup::Inputs, PlotKind::Timed, std::tuple_size_v<decltype(Inputs::timed)>,
     QT_TRANSLATE_NOOP("zentro::PlotSources", "Timed input %1")},
    {PlotGroup::Inputs, PlotKind::Battery, 0, QT_TRANSLATE_NOOP("zentro::PlotSources", "Battery")},
    {PlotGroup::Outputs, PlotKind::Motor, std::tuple_size_v<decltype(Outputs::motors)>,
     QT_TRANSLATE_NOOP("zentro::PlotSources", "Motor %1")},
    {PlotGroup::Outputs, PlotKind::Servo, std::tuple_size_v<decltype(Outputs::servos)>,
     QT_TRANSLATE_NOOP("zentro::PlotSources", "Servo %1")},
    {PlotGroup::Outputs, PlotKind::Port, std::tuple_size_v<decltype(Outputs::ports)>,
     QT_TRANSLATE_NOOP("zentro::PlotSources", "Port %1")},
    {PlotGroup::Outputs, PlotKind::Led, std::tuple_size_v<decltype(Outputs::leds)>,
     QT_TRANSLATE_NOOP("zentro::PlotSources", "LED %1")},
    {PlotGroup::Outputs, PlotKind::Display, 0, QT_TRANSLATE_NOOP("zentro::PlotSources", "Display")},
    {PlotGroup::Outputs, PlotKind::Note, 0, QT_TRANSLATE_NOOP("zentro::PlotSources", "Note")},
};

QString NameOf(const DebugVariable& variable) {
    const QString name = QString::fromStdString(variable.name);
    if (EqualsIgnoreCase(variable.parentName, kProgram)) return name;
    return SourceTexts::tr("%1 of %2").arg(name, QString::fromStdString(variable.parentName));
}

}  // namespace

std::vector<NamedPlotSource> PlotSources(const Compilation* compilation) {
    std::vector<NamedPlotSource> ofBoard;
    for (const KindRow& row : kKinds) {
        const QString name = SourceTexts::tr(row.name);
        if (row.count == 0) ofBoard.push_back({row.group, name, {row.kind}});
        for (std::uint32_t index = 0; index < row.count; ++index)
            ofBoard.push_back({row.group, name.arg(index + 1), {row.kind, index}});
    }
    if (compilation == nullptr) return ofBoard;
    std::vector<NamedPlotSource> sources;
    for (const DebugVariable& variable : VariablesOf(*compilation)) {
        if (variable.isOfCompiler || variable.type == DataType::Table) continue;
        QString name = NameOf(variable);
        if (std::ranges::find(ofBoard, name, &NamedPlotSource::name) != ofBoard.end())
            name = SourceTexts::tr("%1 (variable)").arg(name);
        sources.push_back(
            {PlotGroup::Variables, name, {PlotKind::Variable, variable.address, variable.type}});
    }
    sources.insert(sources.end(), ofBoard.begin(), ofBoard.end());
    return sources;
}

}  // namespace zentro
