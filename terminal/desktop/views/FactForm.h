#pragma once

#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <vector>

namespace margindesk {

// A line of a form: a caption and its value, or with kHeading a caption alone.
struct TFact {
  enum class TKind { kText, kNumber, kHeading };

  QString FCaption;
  QString FValue;
  TKind FKind = TKind::kText;
};

// Labelled facts, one below the other. A number is right-aligned, and one below zero has the colour for
// that besides its sign. Values can be selected and copied.
class TFactForm : public QScrollArea {
 public:
  explicit TFactForm(QWidget* parent);

  void SetFacts(const std::vector<TFact>& facts);

  QSize minimumSizeHint() const override;  // no value is cut

 protected:
  void changeEvent(QEvent* event) override;

 private:
  struct TLine {
    QLabel* FCaption;
    QLabel* FValue;
    TFact::TKind FKind;
  };

  void LimitWidth();
  void AddLine(const TFact& fact);
  void SetValue(const TLine& line, const QString& value) const;

  QWidget* FContent = nullptr;
  QGridLayout* FGrid = nullptr;
  std::vector<TLine> FLines;
};

}  // namespace margindesk
