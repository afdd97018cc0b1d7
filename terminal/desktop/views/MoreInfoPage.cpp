#include "terminal/desktop/views/MoreInfoPage.h"

#include "terminal/desktop/HostText.h"
#include "terminal/desktop/views/Figure.h"

namespace margindesk {

namespace {

using TKind = TFact::TKind;

struct TFigureLine {
  const char* FText;  // of the language file's "Resource" section
  TFigure FFigure;
};

constexpr TFigureLine kLimits[] = {
    {"Res_TradingLimit", TFigure::kTradingLimit},
    {"Res_CreditLimit", TFigure::kCreditLimit},
    {"Res_MarginLimit", TFigure::kMarginLimit},
    {"Res_PurchasingPower", TFigure::kPurchasingPower},
    {"Res_WithdrawCB", TFigure::kWithdrawableCashBalance},
};

constexpr TFigureLine kMargins[] = {
    {"Res_Equity", TFigure::kNetEquity},
    {"Res_I_Margin", TFigure::kInitialMargin},
    {"Res_M_Margin", TFigure::kMaintenanceMargin},
    {"Res_MarginCall", TFigure::kMarginCall},
};

QString PageText(std::string_view key) {
  return ToQt(TCustomLanguageManager::GetInstance().GetLanguageText("MoreInfo", key));
}

QString FieldText(std::string_view key) {
  return ToQt(TCustomLanguageManager::GetInstance().GetLanguageText("Resource", key));
}

void AddFigures(std::vector<TFact>& lines, const TAccountRecord& account, std::string_view heading,
                std::span<const TFigureLine> figures) {
  const TAccountDataRecord* total = account.FFigures.Find(TCode());
  if (total == nullptr) return;
  lines.push_back({PageText(heading), {}, TKind::kHeading});
  for (const auto& [text, figure] : figures) {
    lines.push_back({FieldText(text), ShowAmount(total->GetFigure(figure)), TKind::kNumber});
  }
}

std::vector<TFact> MakeLines(const TAccountRecord& account) {
  const TAccountFacts& facts = account.FFacts;
  std::vector<TFact> lines{{PageText("Holder"), {}, TKind::kHeading}};
  const std::pair<const char*, std::string> who[] = {{"Res_Account", facts.FAccount.Text()},
                                                     {"Res_AccountName", facts.FName},
                                                     {"Res_User", facts.FUser},
                                                     {"Res_Mobile", facts.FMobile},
                                                     {"Res_Email", facts.FEmail},
                                                     {"Res_MarginClass", facts.FMarginClass}};
  for (const auto& [text, value] : who) {
    if (!value.empty()) lines.push_back({FieldText(text), ToQt(value)});
  }
  if (!account.FFigures.GetCurrencies().empty()) {
    lines.push_back({PageText("Funds"), {}, TKind::kHeading});
    for (const TCode currency : account.FFigures.GetCurrencies()) {
      const double cash = account.FFigures.Find(currency)->GetFigure(TFigure::kCashBalance);
      lines.push_back({ToQt(currency.Text()), ShowAmount(cash), TKind::kNumber});
    }
  }
  AddFigures(lines, account, "Limits", kLimits);
  AddFigures(lines, account, "Margin", kMargins);
  return lines;
}

}  // namespace

TMoreInfoPage::TMoreInfoPage(THostData& hostData, TCode account, QWidget* parent)
    : THostDock(parent), FData(hostData), FAccount(account), FForm(new TFactForm(this)) {
  setWidget(FForm);
  UpdateTexts();
}

void TMoreInfoPage::SetAccount(TCode account) {
  FAccount = account;
  UpdateTexts();
}

void TMoreInfoPage::UpdateTexts() {
  setWindowTitle(PageText("Title") + (FAccount.IsEmpty() ? QString() : QStringLiteral(" – ")) +
                 ToQt(FAccount.Text()));
  Refresh();
}

void TMoreInfoPage::Refresh() {
  const TAccountRecord* account = FData.FindAccount(FAccount);
  FForm->SetFacts(account == nullptr ? std::vector<TFact>{{PageText("NoAccount"), {}, TKind::kHeading}}
                                     : MakeLines(*account));
}

}  // namespace margindesk
