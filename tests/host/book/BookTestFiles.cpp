#include "tests/host/book/BookTestFiles.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <gtest/gtest.h>

namespace margindesk {

namespace {

std::string FigureHeader() {
  std::string header;
  for (const TFigureInfo& figure : kFigureList) header.append(",").append(figure.FColumn);
  return header + "\n";
}

// Figures 1, 2, 3, ... beginning with the given one.
std::string FigureFields(int first) {
  std::string fields;
  for (std::size_t i = 0; i < kFigureCount; ++i) fields += "," + std::to_string(first + static_cast<int>(i));
  return fields + "\n";
}

}  // namespace

TTemporaryFolder::TTemporaryFolder() {
  std::string path = (std::filesystem::temp_directory_path() / "margindesk-book-XXXXXX").string();
  if (mkdtemp(path.data()) == nullptr) throw std::runtime_error("no temporary directory");
  FPath = path;
}

TTemporaryFolder::~TTemporaryFolder() {
  std::error_code error;
  std::filesystem::remove_all(FPath, error);
}

std::string ReadWholeFile(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  EXPECT_TRUE(stream) << file;
  return {std::istreambuf_iterator<char>(stream), {}};
}

void WriteWholeFile(const std::filesystem::path& file, const std::string& text) {
  std::ofstream(file, std::ios::binary) << text;
}

void WriteBookTexts(const std::filesystem::path& directory, const TBookTexts& texts) {
  std::filesystem::remove_all(directory);
  std::filesystem::create_directories(directory);
  for (const auto& [name, text] : texts) WriteWholeFile(directory / name, text);
}

TBookTexts ReadBookTexts(const std::filesystem::path& directory) {
  TBookTexts texts;
  for (const auto& entry : std::filesystem::directory_iterator(directory)) {
    texts[entry.path().filename().string()] = ReadWholeFile(entry.path());
  }
  return texts;
}

TBookTexts ExportedTexts(TBook& book) {
  const TTemporaryFolder folder;
  book.Export(folder.Path());
  return ReadBookTexts(folder.Path());
}

TBookTexts SmallBookTexts() {
  return {
      {"settings.csv", "name,value\nmulti_currency,Y\nchina_connect,N\n"},
      {"currencies.csv", "currency,ratio,excluded,base\nHKD,1,N,Y\nUSD,7.8,N,N\n"},
      {"exchanges.csv",
       "exchange,name,china_connect,period_order,market_open\nHK,Cash market,N,0,Y\nSH,,Y,,N\n"},
      {"products.csv",
       "symbol,name,exchange,currency,product_type,lot_size,contract_size,price_multiplier,otc,otc_minimum,"
       "otc_increment,market_code,underlying,strike,expiry,option_right\n"
       "90001,Example One,HK,HKD,1,100,1,,N,,,M1,,,,\n"
       "OPT1,,HK,HKD,3,1,100,,N,,,M1,90001,25.5,2028-02-29,C\n"},
      {"prices.csv", "symbol,last,bid,ask,previous_close,reference\n90001,25,24.95,25.05,24.5,\n"},
      {"accounts.csv",
       "account,name,user,type,master,master_type,margin_type,mobile,email,status_flags,bod_update_time,"
       "margin_class,day_trade_status,online,position_isolation,margin_method\n"
       "M1,Master,U1,S,,1,1,,,0,09:00:00,A,0,Y,,\n"
       "A1,\"Two, and \"\"three\"\"\",U2,S,M1,,0,,,0,,N/A,-1,N,,\n"},
      {"account_attributes.csv", "account,attribute,value\nA1,ClientFeature,2\n"},
      {"custom_fields.csv",
       "table_name,field,key\noms_CustomAccountInfo,RPQLevel,f1\noms_CustomAccountBalance,CreditLimit,b1\n"},
      {"custom_values.csv", "account,key,value\nA1,f1,3\n"},
      {"custom_balances.csv", "account,currency,key,amount\nA1,HKD,b1,1000\n"},
      {"custom_figures.csv", "account,currency,number,value\nA1,,1,gold\nA1,HKD,2,12.5\n"},
      {"china_connect_links.csv", "account,linked_account\nA1,M1\n"},
      {"figures.csv", "account,currency,separate_row" + FigureHeader() + "A1,,N" + FigureFields(1) +
                          "A1,HKD,N" + FigureFields(2) + "A1,USD,Y" + FigureFields(3)},
      {"consolidated.csv", "account,currency" + FigureHeader() + "M1," + FigureFields(4)},
      {"positions.csv",
       "account,key,symbol,holding_quantity,excluded_quantity,completed_buy_amount,completed_sell_amount,"
       "pl_first_part,realized_pl,pl_second_part,price_based,bod_quantity,voucher_quantity,today_buy_"
       "quantity,"
       "today_sell_quantity,quantity,covered_quantity,side,buy_average_price,sell_average_price,average_"
       "price\n"
       "A1,90001,90001,400,0,0,0,12.5,0,0.1,N,400,0,0,0,400,0,L,0,0,24.9\n"
       "A1,short,OPT1,-2,0,0,0,1,0,0,Y,-2,0,0,0,-2,0,S,0,0,1.5\n"},
  };
}

std::string Replaced(const std::string& text, const std::string& part, const std::string& by) {
  const std::size_t at = text.find(part);
  EXPECT_NE(at, std::string::npos) << part;
  return at == std::string::npos ? text : std::string(text).replace(at, part.size(), by);
}

}  // namespace margindesk
