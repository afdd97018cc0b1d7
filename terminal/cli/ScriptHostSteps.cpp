// Steps at what lies outside the views: time, settings, market and book, what dialogs are answered, and what
// was asked of the host.
#include <algorithm>

#include "host/book/BookError.h"
#include "terminal/cli/ScriptJournal.h"
#include "terminal/cli/ScriptSteps.h"
#include "terminal/session/Locations.h"

namespace margindesk {

namespace {

constexpr std::int32_t kMostTicks = 100'000;  // most of a day

TJson Ticks(TScriptSession& session, const TScriptArguments& step) {
  const std::int32_t count = step.Has("count") ? step.Integer("count") : 1;
  if (count < 0 || count > kMostTicks) {
    throw TScriptError("\"count\" is 0 to " + std::to_string(kMostTicks));
  }
  for (std::int32_t i = 0; i < count; ++i) session.Tick();
  return TJson::object();
}

TJson Language(TScriptSession& session, const TScriptArguments& step) {
  const std::int32_t index = step.Integer("index");
  if (!session.Host().Language().SetLanguage(index)) {
    throw TScriptError("there is no language " + std::to_string(index));
  }
  session.Host().Views().SetLanguage(index);
  session.Host().Preferences().SetLanguage(index);
  return TJson::object();
}

TJson Config(TScriptSession& session, const TScriptArguments& step) {
  TConfigManager& config = session.Host().Config();
  const std::string section = step.Has("section") ? step.Text("section") : config.GetUserSection();
  if (step.Has("value") == step.Has("file")) throw TScriptError("the step takes a \"value\" or a \"file\"");
  const std::string value =
      step.Has("value") ? step.Text("value") : MakeFileAddress(session.Files().FFolder / step.Text("file"));
  config.Store(section, step.Text("key"), value, true);
  return TJson::object();
}

TJson Price(TScriptSession& session, const TScriptArguments& step) {
  const TCode symbol(step.Text("symbol"));
  THostData& data = session.Host().Data();
  const TProductRecord* product = data.FindProduct(symbol);
  if (product == nullptr) throw TScriptError("there is no symbol " + QuotedForMessage(symbol.Text()));
  const double value = step.Number("value");
  if (value < 0) throw TScriptError("a price is not negative");
  TPriceFacts prices = product->GetFacts().FPrices;
  prices.FLast = value;
  data.SetPrice(symbol, prices);
  return TJson::object();
}

TJson Reload(TScriptSession& session, const TScriptArguments& step) {
  session.Reload();
  if (step.Has("account") && session.Host().Data().FindAccount(TCode(step.Text("account"))) == nullptr) {
    throw TScriptError("the book has no account " + QuotedForMessage(step.Text("account")));
  }
  return TJson::object();
}

bool ReadYesOrNo(const TScriptArguments& step) {
  const std::string value = step.Text("value");
  if (value != "yes" && value != "no") throw TScriptError("\"value\" is \"yes\" or \"no\"");
  return value == "yes";
}

// What can be answered, and by which members.
struct TAnswerRow {
  std::string_view FTo;
  std::vector<std::string_view> FMembers;
  void (*FKeep)(TScriptSession& session, const TScriptArguments& step);
};

const std::vector<TAnswerRow>& AnswerRows() {
  static const std::vector<TAnswerRow> kRows = {
      {"confirmation",
       {"value"},
       [](TScriptSession& session, const TScriptArguments& step) {
         session.AnswerConfirmation(ReadYesOrNo(step));
       }},
      {"batch",
       {"value"},
       [](TScriptSession& session, const TScriptArguments& step) { session.AnswerBatch(ReadYesOrNo(step)); }},
      {"columns",
       {"order", "visible"},
       [](TScriptSession& session, const TScriptArguments& step) {
         TColumnAnswer answer{step.Texts("order"), std::nullopt};
         if (step.Has("visible")) answer.FVisible = step.Texts("visible");
         session.AnswerColumns(std::move(answer));
       }},
  };
  return kRows;
}

TJson Answer(TScriptSession& session, const TScriptArguments& step) {
  const std::string to = step.Text("to");
  const auto row = std::ranges::find(AnswerRows(), to, &TAnswerRow::FTo);
  if (row == AnswerRows().end()) throw TScriptError("there is no dialog " + QuotedForMessage(to));
  for (const std::string_view member : {"value", "order", "visible"}) {
    if (step.Has(member) && std::ranges::find(row->FMembers, member) == row->FMembers.end()) {
      throw TScriptError("the answer to " + QuotedForMessage(to) + " takes no " + QuotedForMessage(member));
    }
  }
  row->FKeep(session, step);
  return TJson::object();
}

TJson MakePackagesJson(const TPackages& packages) {
  TJson list = TJson::array();
  for (const auto& package : packages.GetPackages()) {
    list.push_back({{"name", package->GetName()}, {"units", package->GetUnits()}});
  }
  return {{"packages", std::move(list)}};
}

TJson Load(TScriptSession& session, const TScriptArguments& step) {
  TPackages& packages = session.Packages();
  const TScriptFiles& files = session.Files();
  const std::string refusal =
      packages.Load(step.Has("file") ? files.FFolder / step.Text("file") : files.FPackage);
  if (!refusal.empty()) throw TScriptError(refusal);
  return MakePackagesJson(packages);
}

TJson Unload(TScriptSession& session, const TScriptArguments& /*step*/) {
  session.Packages().UnloadAll();
  return TJson::object();
}

TJson Packages(TScriptSession& session, const TScriptArguments& /*step*/) {
  return MakePackagesJson(session.Packages());
}

TJson Journal(TScriptSession& session, const TScriptArguments& /*step*/) {
  return {{"requests", MakeJournalJson(session.Journal().Take())},
          {"subscriptions", MakeSubscriptionsJson(session.Host().GetSubscriptions())}};
}

}  // namespace

std::vector<TScriptStep> MakeHostSteps() {
  return {{"ticks", {{"count", TScriptKind::kInteger, false}}, &Ticks},
          {"language", {{"index", TScriptKind::kInteger}}, &Language},
          {"config",
           {{"section", TScriptKind::kText, false},
            {"key"},
            {"value", TScriptKind::kText, false},
            {"file", TScriptKind::kText, false}},
           &Config},
          {"price", {{"symbol"}, {"value", TScriptKind::kNumber}}, &Price},
          {"reload", {{"account", TScriptKind::kText, false}}, &Reload},
          {"packages", {}, &Packages},
          {"load", {{"file", TScriptKind::kText, false}}, &Load},
          {"unload", {}, &Unload},
          {"answer",
           {{"to"},
            {"value", TScriptKind::kText, false},
            {"order", TScriptKind::kTexts, false},
            {"visible", TScriptKind::kTexts, false}},
           &Answer},
          {"journal", {}, &Journal}};
}

}  // namespace margindesk
