#include "advice/advice.h"

#include <algorithm>

#include "advice/advice_finders.h"
#include "advice/line_values.h"

namespace zentro {

void GiveAdvice(Compilation& compilation) {
    AdviceSearch search{compilation};
    LineAdvice ofLines(search);
    OrderAdvice ofOrder(search);
    LoopAdvice ofLoops(search);
    MotorAdvice ofMotors(search);
    PauseAdvice ofPauses(search);
    NameAdvice ofNames(search);
    OutputAdvice ofOutputs(search);
    MotorInLoopAdvice ofMotorsInLoops(search);
    ValueAdvice ofValues(search);
    ChoiceAdvice ofChoices(search);
    TimeAdvice ofTime(search);
    for (const SourceLine& line : compilation.sourceLines) {
        if (!line.GeneratesCode()) continue;
        search.role = InnerRoleOf(line);
        ofLines.Look(line);
        ofOrder.Look(line);
        ofLoops.Look(line);
        ofMotors.Look(line);
        ofPauses.Look(line);
        ofNames.Look(line);
        ofOutputs.Look(line);
        ofMotorsInLoops.Look(line);
        ofValues.Look(line);
        ofChoices.Look(line);
        ofTime.Look(line);
    }
    ofLines.Finish();
    ofPauses.Finish();
    ofNames.Finish();
    ofMotorsInLoops.Finish();
    ofValues.Finish();
    ofTime.Finish();
    std::ranges::stable_sort(search.findings, {}, &Finding::lineNumber);
    for (const Finding& finding : search.findings)
        compilation.diagnostics.PostError(
            finding.code, &compilation.GetSourceLine(finding.lineNumber), finding.extra);
}

}  // namespace zentro
