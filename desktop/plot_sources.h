#pragma once

#include <QString>
#include <vector>

#include "desktop/plot_curves.h"
#include "model/compilation.h"

namespace zentro {

enum class PlotGroup : std::uint8_t { Variables, Inputs, Outputs };

/// Something that can be plotted, as people call it.
struct NamedPlotSource {
    PlotGroup group{};
    QString name;  ///< no two are called alike
    PlotSource source;
};

/// What can be plotted of a board with this program: its variables but for tables and the
/// compiler's own, all inputs, all outputs. Null: no program is known.
std::vector<NamedPlotSource> PlotSources(const Compilation* compilation);

}  // namespace zentro
