// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyScriptSignatures_p.h"

#include "KyScriptNotation_p.h"
#include "KyScriptTypeNames_p.h"

#include "KyCallSignatures.h"

#include <algorithm>
#include <span>
#include <string>

namespace {

constexpr std::string_view cConstructor = "__init";
constexpr char cQuote = '`';

/// A line of a registration, taken apart.
struct Signature {
    std::string line;
    /// Types are empty where the line has none.
    KyScriptCall call;
    std::string text;
    bool namesItsResult = false;
};

/// A way to call that a line stands for: with so many of its parameters.
struct Form {
    const Signature* signature;
    std::size_t nbParameters;
    bool isUsed = false;
};

/// What stands before the sign, which is taken too, outside of parentheses; everything when there is none.
std::string_view takeUntil(std::string_view& rest, char sign) {
    int depth = 0;
    const auto isEnd = [&](char letter) {
        if (letter == sign && depth == 0)
            return true;
        depth += letter == '(' ? 1 : letter == ')' ? -1 : 0;
        return false;
    };
    const auto length = static_cast<std::size_t>(std::ranges::find_if(rest, isEnd) - rest.begin());
    const std::string_view taken = rest.substr(0, length);
    rest.remove_prefix(std::min(length + 1, rest.size()));
    return taken;
}

std::string_view skip(std::string_view text, std::string_view beginning) {
    return text.starts_with(beginning) ? text.substr(beginning.size()) : text;
}

KyScriptParameter parseParameter(std::string_view text, bool& isClassName) {
    text = skip(text, " ");
    std::string_view name = takeUntil(text, ':');
    KyScriptParameter parameter;
    parameter.isOptional = name.ends_with('?');
    parameter.name = name.substr(0, name.size() - (parameter.isOptional ? 1 : 0));
    parameter.type = skip(text, " ");
    isClassName = parameter.type.starts_with(cQuote);
    if (isClassName)
        parameter.type = "string";
    return parameter;
}

Signature parse(std::string_view line) {
    constexpr std::string_view cText = " -- ";
    Signature signature;
    signature.line = line;
    if (const std::size_t text = line.find(cText); text != std::string_view::npos) {
        signature.text = line.substr(text + cText.size());
        line = line.substr(0, text);
    }
    takeUntil(line, '(');
    for (std::string_view list = takeUntil(line, ')'); !list.empty();) {
        bool isClassName = false;
        signature.call.parameters.push_back(parseParameter(takeUntil(list, ','), isClassName));
        signature.namesItsResult = signature.namesItsResult || isClassName;
    }
    signature.call.result = skip(line, ": ");
    return signature;
}

std::size_t countRequired(const KyScriptCall& call) {
    const auto isOptional = [](const KyScriptParameter& parameter) { return parameter.isOptional; };
    return static_cast<std::size_t>(std::ranges::find_if(call.parameters, isOptional) - call.parameters.begin());
}

/// A name that Lua takes, or the dots for any number of values.
bool isParameterName(const std::string& name) {
    return name == "..." || kyIsScriptName(name);
}

std::string getPrefix(std::string_view owner) {
    return owner.empty() ? std::string() : std::string(owner) + '.';
}

std::string describe(std::string_view owner, std::string_view function, const KyScriptCall& call) {
    return getPrefix(owner) + std::string(function) + '(' + kyListScriptParameters(call.parameters) + ')';
}

/// Names the calls of one function.
class Naming {
public:
    Naming(std::string_view owner, std::string_view function, std::vector<std::string>& unnamed)
        : mOwner(owner)
        , mFunction(function)
        , mUnnamed(unnamed) {
        for (const std::string& line : KyCallSignatures::find(owner, function))
            mSignatures.push_back(parse(line));
        for (const Signature& signature : mSignatures)
            for (std::size_t i = countRequired(signature.call); i <= signature.call.parameters.size(); ++i)
                mForms.push_back({&signature, i});
    }

    const std::vector<Signature>& getSignatures() const { return mSignatures; }

    void name(std::vector<KyScriptCall>& calls) {
        for (KyScriptCall& call : calls)
            name(call);
        for (const Form& form : mForms)
            if (!form.isUsed)
                mUnnamed.push_back(getPrefix(mOwner) + form.signature->line + " fits no call");
    }

private:
    void name(KyScriptCall& call) {
        const auto form = std::ranges::find_if(
            mForms, [&](const Form& known) { return !known.isUsed && known.nbParameters == call.parameters.size(); });
        if (isCopy(call))
            call.parameters.front().name = "other";
        else if (form != mForms.end())
            apply(*form, call);
        else if (!kyNameScriptParameters(mFunction, call.parameters))
            mUnnamed.push_back(describe(mOwner, mFunction, call));
    }

    /// The constructor that every class of values has.
    bool isCopy(const KyScriptCall& call) const {
        return mFunction == cConstructor && call.parameters.size() == 1 && call.parameters.front().type == mOwner;
    }

    void apply(Form& form, KyScriptCall& call) {
        form.isUsed = true;
        const KyScriptCall& said = form.signature->call;
        for (std::size_t i = 0; i < call.parameters.size(); ++i) {
            call.parameters[i].name = said.parameters[i].name;
            if (!said.parameters[i].type.empty())
                call.parameters[i].type = said.parameters[i].type;
        }
        if (!said.result.empty())
            call.result = said.result;
        if (!std::ranges::all_of(call.parameters, &isParameterName, &KyScriptParameter::name))
            mUnnamed.push_back(describe(mOwner, mFunction, call) + " has a name that is none");
    }

    std::string_view mOwner;
    std::string_view mFunction;
    std::vector<std::string>& mUnnamed;
    std::vector<Signature> mSignatures;
    std::vector<Form> mForms;
};

/// Functions that tell nothing of themselves are what their registration says.
void takeSignatures(const std::vector<Signature>& signatures, KyScriptFunction& function) {
    for (const Signature& signature : signatures) {
        function.calls.push_back(signature.call);
        function.namesItsResult = function.namesItsResult || signature.namesItsResult;
    }
}

void nameFunction(std::string_view owner, KyScriptFunction& function, std::vector<std::string>& unnamed) {
    Naming naming(owner, function.name, unnamed);
    const std::vector<Signature>& signatures = naming.getSignatures();
    if (function.text.empty() && !signatures.empty())
        function.text = signatures.front().text;
    if (!function.calls.empty()) {
        naming.name(function.calls);
        kyJoinScriptCalls(function.calls);
        return;
    }
    takeSignatures(signatures, function);
    if (function.calls.empty()) {
        function.calls.push_back({{{"...", "any"}}, "any"});
        unnamed.push_back(describe(owner, function.name, function.calls.front()));
    }
}

void nameSignal(const std::string& owner, KyScriptSignal& entry, std::vector<std::string>& unnamed) {
    std::vector<KyScriptCall> calls{{std::move(entry.parameters), {}}};
    Naming(owner, entry.name, unnamed).name(calls);
    entry.parameters = std::move(calls.front().parameters);
}

/// Whether the longer call takes whatever the shorter one takes, and all numbers of arguments between them.
bool goesOn(const KyScriptCall& shorter, const KyScriptCall& longer) {
    const auto isSame = [](const KyScriptParameter& one, const KyScriptParameter& other) {
        return one.name == other.name && one.type == other.type;
    };
    const std::size_t size = shorter.parameters.size();
    return longer.parameters.size() > size && countRequired(longer) <= size + 1 && shorter.result == longer.result &&
           std::ranges::equal(shorter.parameters, std::span(longer.parameters).first(size), isSame);
}

void join(const KyScriptCall& shorter, KyScriptCall& longer) {
    const std::size_t nbRequired = std::min(countRequired(shorter), countRequired(longer));
    for (std::size_t i = nbRequired; i < longer.parameters.size(); ++i)
        longer.parameters[i].isOptional = true;
}

} // namespace

void kyJoinScriptCalls(std::vector<KyScriptCall>& calls) {
    for (std::size_t i = 0; i < calls.size();) {
        const auto longer =
            std::ranges::find_if(calls, [&](const KyScriptCall& call) { return goesOn(calls[i], call); });
        if (longer == calls.end()) {
            ++i;
            continue;
        }
        join(calls[i], *longer);
        const auto place = calls.begin() + static_cast<std::ptrdiff_t>(i);
        if (longer > place)
            std::rotate(place, longer, longer + 1);
        calls.erase(calls.begin() + static_cast<std::ptrdiff_t>(longer > place ? i + 1 : i));
        i = 0;
    }
}

void kyNameScriptCatalogue(KyScriptCatalogue& catalogue) {
    for (KyScriptClass& scriptClass : catalogue.classes) {
        Naming(scriptClass.name, cConstructor, catalogue.unnamed).name(scriptClass.constructors);
        kyJoinScriptCalls(scriptClass.constructors);
        for (KyScriptFunction& function : scriptClass.functions)
            nameFunction(scriptClass.name, function, catalogue.unnamed);
        for (KyScriptSignal& entry : scriptClass.emitted)
            nameSignal(scriptClass.name, entry, catalogue.unnamed);
    }
    for (KyScriptFunction& function : catalogue.functions)
        nameFunction({}, function, catalogue.unnamed);
}
