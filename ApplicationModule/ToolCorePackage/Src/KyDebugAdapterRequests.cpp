// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDebugAdapterSession_p.h"

#include "KyDebugAdapterJson_p.h"
#include "KyScriptDebugger.h"
#include "KyScriptEngine.h"
#include "KyScriptLines.h"
#include "KyScriptListing.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QUrl>

#include <algorithm>
#include <iterator>
#include <limits>

namespace {

using Kind = KyDebugArgument::Kind;

constexpr int cMaxBreakpoints = 1000;
constexpr std::size_t cMaxFrames = 100000;
constexpr char cNoFrame[] = "there is no such frame";
constexpr char cNoThread[] = "there is no such thread";
constexpr std::size_t cMaxSourceSize = std::size_t(32) << 20;
constexpr char cErrorFilter[] = "error";

std::string getText(const QJsonObject& arguments, const char* name) {
    return arguments.value(QLatin1String(name)).toString().toStdString();
}

/// Whether a text is an expression, so that evaluating it does nothing that a glance should not.
bool isExpression(const KyScriptEngine& engine, const std::string& text, std::string& error) {
    return engine.checkChunkSyntax("return " + text, error);
}

bool isFile(const QString& path) {
    return !path.contains(QChar::Null) && QFileInfo(path).isFile();
}

/// Stands for the variables that are left out.
QJsonObject makeRest() {
    return {{"name", "..."}, {"value", "(the rest is left out)"}, {"variablesReference", 0}};
}

template <class List, class Make>
QJsonArray makeArray(const List& list, Make make) {
    QJsonArray array;
    for (const auto& element : list)
        array.append(make(element));
    return array;
}

} // namespace

KyDebugAdapterSession::Answer KyDebugAdapterSession::initialize(const QJsonObject& arguments) {
    mFirstLine = arguments.value("linesStartAt1").toBool(true) ? 1 : 0;
    mFirstColumn = arguments.value("columnsStartAt1").toBool(true) ? 1 : 0;
    mUsesUrls = arguments.value("pathFormat") == QLatin1String("uri");
    mIsInitialized = true;
    mAfterwards = [this] { mSend(kyDebugEvent("initialized")); };
    return {kyDebugCapabilities(), {}};
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::attach(const QJsonObject&) {
    if (mIsBegun)
        return fail("the session is attached already");
    begin(true);
    mAfterwards = [this] { proceed(); };
    return {};
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::launch(const QJsonObject& arguments) {
    const QString program = arguments.value("program").toString();
    if (mIsBegun)
        return fail("the session is attached already");
    if (!program.isEmpty() && debugger().isStopped())
        return fail("a script stands still, no other can be run");
    if (!program.isEmpty() && !isFile(program))
        return fail(QStringLiteral("there is no file '%1'").arg(program));
    begin(!arguments.value("noDebug").toBool());
    mProgram = program.toStdString();
    mStopsOnEntry = arguments.value("stopOnEntry").toBool();
    mAfterwards = [this] { proceed(); };
    return {};
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::disconnect(const QJsonObject&) {
    mAfterwards = [this] { mHasEnded = true; };
    return {};
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::configurationDone(const QJsonObject&) {
    mIsConfigured = true;
    mAfterwards = [this] { proceed(); };
    return {};
}

QString KyDebugAdapterSession::readPath(const QJsonObject& source) const {
    const QString path = source.value("path").toString();
    return mUsesUrls ? QUrl(path).toLocalFile() : path;
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::setBreakpoints(const QJsonObject& arguments) {
    static constexpr KyDebugArgument cParts[] = {{"path", Kind::eText}, {"sourceReference", Kind::eInteger}};
    const QJsonObject source = arguments.value("source").toObject();
    if (const QString error = kyCheckDebugArguments(source, cParts); !error.isEmpty())
        return fail(error);
    const std::string* const chunkName = mSources.findText(source.value("sourceReference").toInt());
    const QString path = readPath(source);
    if (path.isEmpty() && !chunkName)
        return fail("the source has neither a path nor a reference");
    if (path.contains(QChar::Null))
        return fail("the path of the source is none");
    QJsonArray wanted = arguments.value("breakpoints").toArray();
    if (wanted.isEmpty())
        for (const QJsonValue line : arguments.value("lines").toArray())
            wanted.append(QJsonObject{{"line", line}});
    if (wanted.size() > cMaxBreakpoints)
        return fail("there are too many breakpoints");
    const KyScriptLines lines = chunkName ? KyScriptLines(*chunkName) : KyScriptLines::read(path);
    std::vector<KyScriptBreakpoint> breakpoints;
    const QJsonArray told = makeArray(
        wanted, [&](const QJsonValue& element) { return makeBreakpoint(element, lines, breakpoints.emplace_back()); });
    std::erase_if(breakpoints, [](const KyScriptBreakpoint& breakpoint) { return breakpoint.line == 0; });
    if (mIsBegun && !mIsAttached)
        return {{{"breakpoints", told}}, {}};
    mHasSetBreakpoints = mHasSetBreakpoints || !breakpoints.empty();
    if (chunkName)
        mSources.setChunkBreakpoints(*chunkName, breakpoints);
    else
        mSources.setBreakpoints(path, breakpoints);
    return {{{"breakpoints", told}}, {}};
}

QJsonObject KyDebugAdapterSession::makeBreakpoint(const QJsonValue& wanted, const KyScriptLines& lines,
                                                  KyScriptBreakpoint& breakpoint) const {
    static constexpr KyDebugArgument cParts[] = {{"line", Kind::eInteger, true}, {"condition", Kind::eText}};
    const auto refuse = [](const QString& message) { return QJsonObject{{"verified", false}, {"message", message}}; };
    const QJsonObject object = wanted.toObject();
    if (const QString error = kyCheckDebugArguments(object, cParts); !error.isEmpty())
        return refuse(error);
    for (const char* unknown : {"hitCondition", "logMessage"})
        if (!object.value(QLatin1String(unknown)).toString().isEmpty())
            return refuse(QStringLiteral("'%1' is not supported").arg(QLatin1String(unknown)));
    const std::string condition = getText(object, "condition");
    if (std::string error; !condition.empty() && !isExpression(mEngine, condition, error))
        return refuse(QString::fromStdString(error));
    const int wantedLine = std::min(object.value("line").toInt(), std::numeric_limits<int>::max() - 1);
    const int line = lines.findCode(wantedLine + 1 - mFirstLine);
    if (line == 0)
        return refuse(QStringLiteral("there is no code from this line on"));
    breakpoint = {line, condition};
    if (!lines.isKnown())
        return {{"verified", false}, {"line", toClientLine(line)}, {"message", "the file cannot be read"}};
    return {{"verified", true}, {"line", toClientLine(line)}};
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::setExceptionBreakpoints(const QJsonObject& arguments) {
    const QJsonArray filters = arguments.value("filters").toArray();
    if (!std::ranges::all_of(filters, [](const QJsonValue& filter) { return filter.isString(); }))
        return fail("a filter is not a string");
    mIsBreakingOnErrors = filters.contains(QLatin1String(cErrorFilter));
    if (mIsAttached)
        debugger().setBreakingOnErrors(mIsBreakingOnErrors);
    const auto verify = [](const QJsonValue& filter) {
        return QJsonObject{{"verified", filter == QLatin1String(cErrorFilter)}};
    };
    return {{{"breakpoints", makeArray(filters, verify)}}, {}};
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::listThreads(const QJsonObject&) {
    return {{{"threads", makeArray(debugger().getThreads(), &kyDebugThread)}}, {}};
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::listFrames(const QJsonObject& arguments) {
    const int thread = arguments.value("threadId").toInt();
    const int nbFrames = debugger().getNbFrames(thread);
    if (nbFrames == 0 && !hasThread(thread))
        return fail(cNoThread);
    if (mFrames.size() > cMaxFrames)
        forgetFrames();
    const auto frames = debugger().getFrames(thread, arguments.value("startFrame").toInt(),
                                             std::max(arguments.value("levels").toInt(), 0));
    const auto make = [this, thread](const KyScriptFrame& frame) { return makeFrame(thread, frame); };
    return {{{"stackFrames", makeArray(frames, make)}, {"totalFrames", nbFrames}}, {}};
}

QJsonObject KyDebugAdapterSession::makeFrame(int thread, const KyScriptFrame& frame) {
    mFrames.emplace_back(thread, frame.level);
    QString name = QString::fromStdString(frame.name);
    if (name.isEmpty())
        name = frame.kind == "main" ? "(main chunk)" : frame.kind == "tail" ? "(tail call)" : "(function)";
    QJsonObject object{{"id", mFirstFrame + static_cast<int>(mFrames.size()) - 1},
                       {"name", name},
                       {"line", toClientLine(frame.line)},
                       {"column", frame.line > 0 ? mFirstColumn : 0}};
    if (frame.line > 0)
        object["source"] = makeSource(frame.chunkName, frame.shortName);
    else
        object["presentationHint"] = QStringLiteral("subtle");
    return object;
}

QJsonObject KyDebugAdapterSession::makeSource(const std::string& chunkName, const std::string& shortName) {
    const QString path = mSources.findPath(chunkName);
    if (!path.isEmpty())
        return {{"name", QFileInfo(path).fileName()},
                {"path", mUsesUrls ? QUrl::fromLocalFile(path).toString() : path}};
    QJsonObject source{{"name", QString::fromStdString(shortName)}};
    if (const int reference = mSources.getReference(chunkName); reference != 0)
        source["sourceReference"] = reference;
    else
        source["presentationHint"] = QStringLiteral("deemphasize");
    return source;
}

const std::pair<int, int>* KyDebugAdapterSession::findFrame(const QJsonValue& id) const {
    const int index = id.toInt() - mFirstFrame;
    return index >= 0 && index < static_cast<int>(mFrames.size()) ? &mFrames[static_cast<std::size_t>(index)] : nullptr;
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::listScopes(const QJsonObject& arguments) {
    const auto* const frame = findFrame(arguments.value("frameId"));
    if (!frame)
        return fail(cNoFrame);
    return {{{"scopes", makeArray(debugger().getScopes(frame->first, frame->second), &kyDebugScope)}}, {}};
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::listVariables(const QJsonObject& arguments) {
    const KyScriptListing listing =
        KyScriptListing::make(debugger(), arguments.value("variablesReference").toInt(),
                              arguments.value("start").toInt(), arguments.value("count").toInt());
    QJsonArray told = makeArray(listing.variables,
                                [](const KyScriptVariable& variable) { return kyDebugVariable(variable, "value"); });
    if (listing.isTooLarge)
        told.append(makeRest());
    return {{{"variables", told}}, {}};
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::setVariable(const QJsonObject& arguments) {
    KyScriptVariable result;
    if (!debugger().setVariable(arguments.value("variablesReference").toInt(), getText(arguments, "name"),
                                getText(arguments, "value"), result))
        return fail(QString::fromStdString(result.value));
    return {kyDebugVariable(result, "value"), {}};
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::evaluate(const QJsonObject& arguments) {
    const std::string expression = getText(arguments, "expression");
    const QJsonValue context = arguments.value("context");
    std::string error;
    if ((context == QLatin1String("watch") || context == QLatin1String("hover")) &&
        !isExpression(mEngine, expression, error))
        return fail(QString::fromStdString(error));
    const QJsonValue id = arguments.value("frameId");
    const auto* const found = findFrame(id);
    if (id.isDouble() && !found)
        return fail(cNoFrame);
    // It may let other requests in, which tell of further frames.
    const auto frame = found ? *found : std::pair(0, 0);
    KyScriptVariable result;
    if (!debugger().evaluate(frame.first, frame.second, expression, result))
        return fail(QString::fromStdString(result.value));
    return {kyDebugVariable(result, "result"), {}};
}

bool KyDebugAdapterSession::hasThread(int thread) const {
    const auto threads = debugger().getThreads();
    return std::ranges::count(threads, thread, &KyScriptThread::id) > 0;
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::move(const QJsonObject& arguments, void (KyScriptDebugger::*how)(),
                                                          const QJsonObject& body) {
    if (!hasThread(arguments.value("threadId").toInt()))
        return fail(cNoThread);
    mIsGoingOn = true;
    mHasAskedForStop = how != &KyScriptDebugger::resume;
    (debugger().*how)();
    return {body, {}};
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::goOn(const QJsonObject& arguments) {
    return move(arguments, &KyScriptDebugger::resume, {{"allThreadsContinued", true}});
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::stepOver(const QJsonObject& arguments) {
    return move(arguments, &KyScriptDebugger::stepOver);
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::stepInto(const QJsonObject& arguments) {
    return move(arguments, &KyScriptDebugger::stepInto);
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::stepOut(const QJsonObject& arguments) {
    return move(arguments, &KyScriptDebugger::stepOut);
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::pause(const QJsonObject&) {
    if (!mIsAttached)
        return fail("the session is not attached");
    if (debugger().isStopped() && !mIsGoingOn)
        return {};
    mHasAskedForStop = true;
    debugger().pause();
    return {};
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::getSource(const QJsonObject& arguments) {
    int reference = arguments.value("sourceReference").toInt();
    if (reference == 0)
        reference = arguments.value("source").toObject().value("sourceReference").toInt();
    const std::string* const text = mSources.findText(reference);
    if (!text)
        return fail("there is no such source");
    if (text->size() > cMaxSourceSize)
        return fail("the source is too long");
    return {{{"content", QString::fromStdString(*text)}, {"mimeType", "text/x-lua"}}, {}};
}

KyDebugAdapterSession::Answer KyDebugAdapterSession::listSources(const QJsonObject&) {
    const auto make = [this](const std::string& script) { return makeSource(script, {}); };
    return {{{"sources", makeArray(debugger().getScripts(), make)}}, {}};
}
