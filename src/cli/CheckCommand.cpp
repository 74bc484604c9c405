#include "Commands.h"

#include "classfile/Checks.h"
#include "classfile/ImportCommand.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

namespace tarn::cli
{

namespace
{

QJsonObject toJson(const Problem& problem)
{
    QJsonObject object{
        {QStringLiteral("severity"), problem.isError() ? QStringLiteral("error") : QStringLiteral("warning")},
        {QStringLiteral("field"), problem.field},
        {QStringLiteral("what"), problem.what}};
    if (!problem.configName.isEmpty())
        object.insert(QStringLiteral("configuration"), problem.configName);
    if (problem.classNumber)
        object.insert(QStringLiteral("class_number"), *problem.classNumber);
    if (!problem.className.isEmpty())
        object.insert(QStringLiteral("class_name"), problem.className);
    return object;
}

// An import's view of a class file, in the same shape as the stored rows' problems.
std::vector<Problem> fileProblems(const ClassFileCheck& check, const QString& name)
{
    std::vector<Problem> problems;
    for (const QString& problem : check.problems)
        problems.push_back({Problem::Severity::Error, {}, {}, {}, {}, name, problem});
    for (const QString& warning : check.warnings)
        problems.push_back({Problem::Severity::Warning, {}, {}, {}, {}, name, warning});
    return problems;
}

int checkFile(const Invocation& call, Console& console)
{
    const QString& path = call.arguments[0];
    const bool standardInput = path == StandardStream;
    QFile file(path);
    if (!standardInput && !file.open(QIODevice::ReadOnly)) {
        console.error
            << QStringLiteral("tarnctl: cannot open %1: %2\n").arg(QDir::toNativeSeparators(path), file.errorString());
        return Refused;
    }
    const ClassFileCheck check = checkClassFile(standardInput ? console.in : file);
    const QString name = sourceName(path);
    const std::vector<Problem> problems = fileProblems(check, name);
    if (call.json) {
        reportProblems(problems, call, console);
        return statusOf(problems, call);
    }
    for (const QString& warning : check.warnings)
        console.error << name << ": warning: " << warning << '\n';
    for (const QString& problem : check.problems)
        console.error << name << ": " << problem << '\n';
    if (problems.empty() && !call.quiet)
        console.text << name << ": no problems\n";
    return statusOf(problems, call);
}

} // namespace

void reportProblems(const std::vector<Problem>& problems, const Invocation& call, Console& console)
{
    if (call.json) {
        QJsonArray list;
        for (const Problem& problem : problems)
            list.append(toJson(problem));
        console.text << QJsonDocument(list).toJson(QJsonDocument::Indented);
        return;
    }
    for (const Problem& problem : problems)
        console.error << "tarnctl: " << describe(problem) << '\n';
}

int statusOf(const std::vector<Problem>& problems, const Invocation& call)
{
    const bool fails = hasError(problems) || (call.strict && !problems.empty());
    return fails ? Refused : Success;
}

int checkCommand(const Invocation& call, Console& console)
{
    if (!call.config.isEmpty() || call.reference)
        return checkStoredCommand(call, console);
    return checkFile(call, console);
}

} // namespace tarn::cli
