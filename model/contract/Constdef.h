#pragma once

#include <cstdint>
#include <string_view>

namespace margindesk {

// Sections of the language files that every resource key and every error code is looked up under.
inline constexpr std::string_view Const_ResourceStringTag = "Resource";
inline constexpr std::string_view Const_ErrorCodeTag = "ErrorCode";

// Cell codes of the account tree, which are also the tags of its columns.
inline constexpr std::int32_t kCellValue = 3;     // the figure
inline constexpr std::int32_t kCellCaption = 21;  // the caption of a row: its field, or its currency

// An amount counts as zero when its absolute value is not above this.
inline constexpr double kZeroTolerance = 1e-7;

// Fields of a subscription item.
inline constexpr std::int32_t kItemReferencePrice = 3;
inline constexpr std::int32_t kItemExchange = 20;
inline constexpr std::int32_t kItemProductType = 22;
inline constexpr std::int32_t kItemCurrency = 23;
inline constexpr std::int32_t kItemLotSize = 24;
inline constexpr std::int32_t kItemMarketCode = 73;
inline constexpr std::int32_t kItemPriceMultiplier = 1504;
inline constexpr std::int32_t kItemOTC = 1508;  // "1" over the counter
inline constexpr std::int32_t kItemBondMinimum = 3401;
inline constexpr std::int32_t kItemBondIncrement = 3402;
// Fields that the host adds for its own base classes.
inline constexpr std::int32_t kItemLast = 5001;
inline constexpr std::int32_t kItemBid = 5002;
inline constexpr std::int32_t kItemAsk = 5003;
inline constexpr std::int32_t kItemPreviousClose = 5004;
// What one unit is worth at a price of one, in the product's currency: 1 for a stock, the contract size for a
// derivative, 0.01 for a bond that is quoted in percent.
inline constexpr std::int32_t kItemContractSize = 5005;
// Of the market value: the part that a holding needs as margin, and the part that it may be lent against.
inline constexpr std::int32_t kItemMarginRatio = 5006;
inline constexpr std::int32_t kItemAcceptRatio = 5007;
// Fields that positions add to the catalogue's for the host's own base classes: prices in the product's
// currency.
inline constexpr std::int32_t kPositionAveragePrice = 5101;
inline constexpr std::int32_t kPositionBuyAveragePrice = 5102;
inline constexpr std::int32_t kPositionSellAveragePrice = 5103;
// Columns of a position grid in its conversion currency, which their captions name.
inline constexpr std::int32_t kPositionConvertedMarketValue = 406;
inline constexpr std::int32_t kPositionConvertedPL = 896;

inline constexpr std::int32_t kItemReady = 1;  // TCustomSubItem::GetStatus

// The service name of the reference data of a symbol (TCustomSubscribeAdapter::GetSubItem).
inline constexpr std::string_view kReferenceService = "PRCDDS";

// Product type codes (kItemProductType) that have rules of their own.
inline constexpr std::int32_t kProductTypeBond = 6;
inline constexpr std::int32_t kProductTypeFund = 10;

// Sides and statuses of a client order.
inline constexpr std::int32_t kSideBuy = 0;
inline constexpr std::int32_t kSideSell = 1;
inline constexpr std::int32_t kStatusNotGiven = 0;
inline constexpr std::int32_t kStatusPending = 1;
inline constexpr std::int32_t kStatusCompleted = 3;

// Its principal and whether it opens or closes a position; 0 where the exchange asks for neither.
inline constexpr std::int32_t kPrincipalClient = 11;
inline constexpr std::int32_t kPrincipalHouse = 12;
inline constexpr std::int32_t kPrincipalRT = 13;
inline constexpr std::int32_t kOpenCloseOpen = 1;
inline constexpr std::int32_t kOpenCloseClose = 2;

// An extra field of a client order: a market order, whose price is 0.
inline constexpr std::string_view kOrderTypeField = "OrderType";
inline constexpr std::string_view kOrderTypeMarket = "Market";

// Channels and channel messages.
inline constexpr std::int32_t kChannelLinkedAccount = 10;  // a position's account, to linked views
inline constexpr std::int32_t kChannelLinkedSymbol = 11;   // a position's symbol, likewise
inline constexpr std::int32_t kChannelLinkedOrder = 12;    // a position's symbol; object: TCustomClientOrder*
inline constexpr std::int32_t kChannelMainFormShown = 104;
inline constexpr std::int32_t kChannelLayoutLoaded = 109;
inline constexpr std::int32_t kMessageBatchConfirmation = 18012;  // TOrderTakeActionRecord
inline constexpr std::int32_t kMessageCustomColumns = 18013;      // TCustomColumnRecord
inline constexpr std::int32_t kMessageSymbolList = 18015;         // TSymbolListRecord
inline constexpr std::int32_t kMessageMoreInfo = 18027;           // TWebViewRecord

// View notifications.
inline constexpr std::int32_t kViewAccountChanged = 1024;  // account, currency or aggregation
inline constexpr std::int32_t kViewLayoutChanged = 1026;   // shown rows, language, layout or caption buttons

// Order actions.
inline constexpr std::int32_t kActionOrder = 1;
inline constexpr std::int32_t kActionOTCFund = 37;
inline constexpr std::int32_t kActionOTCBond = 38;
inline constexpr std::int32_t kActionSimulate = 54;

// Views of the host.
inline constexpr std::int32_t kViewPositionDetail = 602;
inline constexpr std::int32_t kViewOptionsPayOff = 620;

// Master type of a consolidated (cross-out) master account.
inline constexpr std::int32_t kMasterTypeConsolidated = 10;

}  // namespace margindesk
