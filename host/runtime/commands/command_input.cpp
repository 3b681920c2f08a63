// The typed readers of a running command (see command_input.h).

#include "runtime/commands/command_input.h"

#include <cmath>
#include <cstdio>
#include <cwctype>
#include <map>
#include <set>
#include <sstream>

#include "dbobjptr.h"
#include "dbsymtb.h"
#include "runtime/drawing/drawing_internal.h"
#include "runtime/drawing/entity_lists.h"
#include "runtime/host.h"

namespace kelvo::commands {

using host::Host;
namespace {

constexpr double kPi = 3.14159265358979323846;

std::optional<double> parseNumber(const std::wstring& text) {
    std::size_t b = text.find_first_not_of(L' '), e = text.find_last_not_of(L' ');
    if (b == std::wstring::npos) return std::nullopt;
    std::wstring body = text.substr(b, e - b + 1);
    wchar_t* end = nullptr;
    double v = std::wcstod(body.c_str(), &end);
    if (end == body.c_str() || *end != L'\0' || !std::isfinite(v)) return std::nullopt;
    return v;
}

std::wstring echoOf(const Input& in) {
    return in.kind == Input::Kind::Text ? in.text : L"";
}

}  // namespace

std::wstring upper(std::wstring text) {
    for (auto& c : text) c = static_cast<wchar_t>(std::towupper(c));
    return text;
}

std::wstring formatReal(double value) {
    wchar_t buffer[64];
    std::swprintf(buffer, 64, L"%.4f", value == 0 ? 0.0 : value);
    return buffer;
}

bool keywordMatches(const std::wstring& keyword, const std::wstring& input) {
    // "_" in front: the keyword's international name, which here is the name itself.
    std::wstring in = upper(!input.empty() && input[0] == L'_' ? input.substr(1) : input);
    std::wstring kw = upper(keyword), caps;
    for (wchar_t c : keyword)
        if (std::iswupper(c) || std::iswdigit(c)) caps += c;
    if (in.empty()) return false;
    if (in == kw) return true;
    if (caps.empty() || caps == kw) return false;
    std::size_t lead = 0;
    while (lead < keyword.size() && !std::iswlower(keyword[lead])) ++lead;
    if (lead == caps.size()) return in.size() >= lead && kw.compare(0, in.size(), in) == 0;
    return in == caps;
}

Context::Context(AcDbDatabase& db, UndoLog& undo, bool echo, std::function<Input()> take)
    : db_(&db), undo_(&undo), echo_(echo), take_(std::move(take)) {
    if (auto last = Host::instance().getVar(L"LASTPOINT"); last && last->isCons()) {
        std::vector<double> p;
        for (lisp::Value it = *last; it.isCons(); it = it.cdr())
            if (it.car().isNumber()) p.push_back(it.car().asReal());
        if (p.size() >= 2) lastPoint_ = AcGePoint3d(p[0], p[1], p.size() > 2 ? p[2] : 0.0);
    }
}

void Context::say(const std::wstring& line) const {
    if (echo_) report(line);
}

void Context::report(const std::wstring& line) const {
    Host& host = Host::instance();
    host.freshLine();
    host.write(line + L"\n");
}

Input Context::next(const std::wstring& prompt) {
    Input in = take_();
    if (in.kind == Input::Kind::Pause) {
        Host::instance().freshLine();
        auto line = Host::instance().readInputLine(prompt + L" ");
        if (!line || *line == L"*Cancel*") throw CommandCancelled{};
        Input typed;
        typed.kind = line->empty() ? Input::Kind::Enter : Input::Kind::Text;
        typed.text = *line;
        return typed;
    }
    if (echo_) {
        std::wstring echo = echoOf(in);
        report(echo.empty() ? prompt : prompt + L" " + echo);
    }
    return in;
}

std::optional<AcGePoint3d> Context::pointFromText(const std::wstring& text) const {
    std::wstring body = text;
    bool relative = !body.empty() && body[0] == L'@';
    if (relative) body.erase(0, 1);
    AcGePoint3d base = relative ? lastPoint_ : AcGePoint3d();
    if (relative && body.empty()) return base;
    if (auto lt = body.find(L'<'); lt != std::wstring::npos) {
        auto d = parseNumber(body.substr(0, lt));
        auto a = parseNumber(body.substr(lt + 1));
        if (!d || !a) return std::nullopt;
        double r = *a * kPi / 180.0;
        return AcGePoint3d(base.x + *d * std::cos(r), base.y + *d * std::sin(r), base.z);
    }
    std::vector<double> p;
    std::wstringstream parts(body);
    for (std::wstring part; std::getline(parts, part, L',');) {
        auto d = parseNumber(part);
        if (!d) return std::nullopt;
        p.push_back(*d);
    }
    if (!body.empty() && body.back() == L',') return std::nullopt;
    if (p.size() < 2 || p.size() > 3) return std::nullopt;
    return AcGePoint3d(base.x + p[0], base.y + p[1], base.z + (p.size() == 3 ? p[2] : 0.0));
}

namespace {

std::optional<std::wstring> matchKeyword(const std::vector<std::wstring>& keywords,
                                         const Input& in) {
    if (in.kind != Input::Kind::Text) return std::nullopt;
    for (const auto& kw : keywords)
        if (keywordMatches(kw, in.text)) return kw;
    return std::nullopt;
}

}  // namespace

std::optional<AcGePoint3d> Context::point(const std::wstring& prompt,
                                          const std::vector<std::wstring>& keywords,
                                          std::wstring* keyword, bool allowEnter) {
    for (;;) {
        Input in = next(prompt);
        if (in.kind == Input::Kind::Enter && allowEnter) {
            if (keyword) *keyword = L"";
            return std::nullopt;
        }
        if (auto kw = matchKeyword(keywords, in)) {
            if (keyword) *keyword = *kw;
            return std::nullopt;
        }
        std::optional<AcGePoint3d> p;
        if (in.kind == Input::Kind::Point)
            p = in.point;
        else if (in.kind == Input::Kind::Text)
            p = pointFromText(in.text);
        if (p) {
            lastPoint_ = *p;
            return p;
        }
        report(keywords.empty() ? L"Invalid point." : L"Point or option keyword required.");
    }
}

std::optional<double> Context::distance(const std::wstring& prompt, const AcGePoint3d* base,
                                        std::optional<double> fallback,
                                        const std::vector<std::wstring>& keywords,
                                        std::wstring* keyword) {
    for (;;) {
        Input in = next(prompt);
        if (in.kind == Input::Kind::Enter && fallback) return fallback;
        if (auto kw = matchKeyword(keywords, in)) {
            if (keyword) *keyword = *kw;
            return std::nullopt;
        }
        if (in.kind == Input::Kind::Number) return in.number;
        std::optional<AcGePoint3d> p;
        if (in.kind == Input::Kind::Text) {
            if (auto d = parseNumber(in.text)) return *d;
            p = pointFromText(in.text);
        }
        if (in.kind == Input::Kind::Point) p = in.point;
        if (p && base) return p->distanceTo(*base);
        report(L"Requires numeric distance, second point, or option keyword.");
    }
}

std::optional<double> Context::angle(const std::wstring& prompt, const AcGePoint3d* base,
                                     std::optional<double> fallback,
                                     const std::vector<std::wstring>& keywords,
                                     std::wstring* keyword) {
    for (;;) {
        Input in = next(prompt);
        if (in.kind == Input::Kind::Enter && fallback) return fallback;
        if (auto kw = matchKeyword(keywords, in)) {
            if (keyword) *keyword = *kw;
            return std::nullopt;
        }
        if (in.kind == Input::Kind::Number) return in.number * kPi / 180.0;
        std::optional<AcGePoint3d> p;
        if (in.kind == Input::Kind::Text) {
            if (auto d = parseNumber(in.text)) return *d * kPi / 180.0;
            p = pointFromText(in.text);
        }
        if (in.kind == Input::Kind::Point) p = in.point;
        if (p && base) return std::atan2(p->y - base->y, p->x - base->x);
        report(L"Requires valid numeric angle or second point.");
    }
}

std::wstring Context::keyword(const std::wstring& prompt, const std::vector<std::wstring>& keywords,
                              std::optional<std::wstring> fallback) {
    for (;;) {
        Input in = next(prompt);
        if (in.kind == Input::Kind::Enter && fallback) return *fallback;
        if (auto kw = matchKeyword(keywords, in)) return *kw;
        report(L"Invalid option keyword.");
    }
}

std::wstring Context::text(const std::wstring& prompt) {
    Input in = next(prompt);
    switch (in.kind) {
        case Input::Kind::Text:
            return in.text;
        case Input::Kind::Number: {
            if (in.integer) return std::to_wstring(static_cast<long long>(in.number));
            wchar_t buffer[64];
            std::swprintf(buffer, 64, L"%.15g", in.number);
            return buffer;
        }
        default:
            return L"";
    }
}

std::vector<AcDbObjectId>& Context::previousSelection(AcDbDatabase& db) {
    static std::map<const AcDbDatabase*, std::vector<AcDbObjectId>> previous;
    return previous[&db];
}

namespace {

bool onLockedLayer(AcDbObjectId id) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
    if (!entity) return false;
    AcDbObjectPointer<AcDbLayerTableRecord> layer(entity->layerId(), AcDb::kForRead);
    return layer && layer->isLocked();
}

}  // namespace

std::vector<AcDbObjectId> Context::select() {
    std::vector<AcDbObjectId> chosen;
    std::set<AcDbObjectId> seen;
    bool removing = false;
    for (;;) {
        Input in = next(removing ? L"Remove objects:" : L"Select objects:");
        if (in.kind == Input::Kind::Enter) break;
        std::vector<AcDbObjectId> found;
        if (in.kind == Input::Kind::Entity || in.kind == Input::Kind::Selection) {
            found = in.ids;
        } else if (in.kind == Input::Kind::Text && keywordMatches(L"Last", in.text)) {
            AcDbObjectId last = drawing::lastEntity(*db_);
            if (!last.isNull()) found.push_back(last);
        } else if (in.kind == Input::Kind::Text && keywordMatches(L"Previous", in.text)) {
            found = previousSelection(*db_);
        } else if (in.kind == Input::Kind::Text && upper(in.text) == L"ALL") {
            drawing::selectAll(*db_, nullptr, found);
        } else if (in.kind == Input::Kind::Text && keywordMatches(L"Remove", in.text)) {
            removing = true;
            continue;
        } else if (in.kind == Input::Kind::Text && keywordMatches(L"Add", in.text)) {
            removing = false;
            continue;
        } else {
            report(L"*Invalid selection*");
            report(
                L"Picking by point, window or fence needs a screen, which this host has not; give "
                L"entity names, a selection set, Last, Previous or ALL.");
            continue;
        }
        std::vector<AcDbObjectId> live;
        for (AcDbObjectId id : found)
            if (AcDbObject* o = drawing::peekObject(id); o && !o->isErased() && AcDbEntity::cast(o))
                live.push_back(id);
        int locked = 0, duplicates = 0, changed = 0;
        for (AcDbObjectId id : live) {
            if (removing) {
                if (seen.erase(id)) {
                    std::erase(chosen, id);
                    ++changed;
                }
                continue;
            }
            if (onLockedLayer(id)) {
                ++locked;
                continue;
            }
            if (!seen.insert(id).second) {
                ++duplicates;
                continue;
            }
            chosen.push_back(id);
            ++changed;
        }
        std::wstring line = std::to_wstring(live.size()) + L" found";
        if (duplicates) line += L" (" + std::to_wstring(duplicates) + L" duplicate)";
        if (removing) line += L", " + std::to_wstring(changed) + L" removed";
        if (removing || chosen.size() != static_cast<std::size_t>(changed))
            line += L", " + std::to_wstring(chosen.size()) + L" total";
        say(line);
        if (locked)
            say(std::to_wstring(locked) + (locked == 1 ? L" was" : L" were") +
                L" on a locked layer.");
    }
    previousSelection(*db_) = chosen;
    return chosen;
}

}  // namespace kelvo::commands
