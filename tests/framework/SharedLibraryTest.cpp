#include <dlfcn.h>
#include <gtest/gtest.h>

#include "model/contract/FormatSettings.h"
#include "model/contract/LanguageManager.h"
#include "tests/framework/FrameworkModule.h"

namespace margindesk {
namespace {

class TSilentLanguages : public TCustomLanguageManager {
 public:
  const std::string& GetLanguageText(std::string_view, std::string_view, std::int32_t, std::int32_t,
                                     const std::string*) const override {
    return FEmpty;
  }
  std::int32_t GetLanguageIndex() const override { return kLanguageEnglish; }
  void GetSectionKeys(std::string_view, std::vector<std::string>&) const override {}
  const std::string& GetSectionKeyValue(std::string_view, std::string_view, std::string_view) const override {
    return FEmpty;
  }

 private:
  std::string FEmpty;
};

TEST(SharedLibrary, ALoadedLibrarySharesServicesCodesAndClassesAndReallyGoes) {
  void* library = dlopen(FRAMEWORK_MODULE, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(library, nullptr) << dlerror();
  const auto getEntry = reinterpret_cast<TGetModuleEntry>(dlsym(library, "GetModuleEntry"));
  ASSERT_NE(getEntry, nullptr) << dlerror();
  const TModuleEntry& entry = *getEntry();

  EXPECT_EQ(entry.FGetLanguageManager(), nullptr);
  TSilentLanguages languages;
  {
    const TServiceScope<TCustomLanguageManager> scope(languages);
    EXPECT_EQ(entry.FGetLanguageManager(), &languages) << "one slot for both sides";
  }
  EXPECT_EQ(entry.FGetLanguageManager(), nullptr);

  const TCode code = entry.FMakeCode("FROM THE MODULE");
  EXPECT_EQ(code, TCode("FROM THE MODULE"));
  EXPECT_TRUE(entry.FMakeCode("").IsEmpty());
  EXPECT_EQ(entry.FGetFormatSettings(), &GetProcessFormatSettings());
  EXPECT_THROW(entry.FThrow("abc"), EConvertError);

  std::string caption;
  TIBaseView view(nullptr);
  const TViewHandle handle = view.AddView(entry.FMakeFrame());
  EXPECT_TRUE(view.GetViewCaption(handle, caption));
  EXPECT_EQ(caption, "from the module");
  view.CloseInstance(handle);

  ASSERT_EQ(dlclose(library), 0);
  EXPECT_EQ(dlopen(FRAMEWORK_MODULE, RTLD_NOW | RTLD_NOLOAD), nullptr) << "it is still mapped";
  EXPECT_EQ(code.Text(), "FROM THE MODULE") << "a code outlives the library that made it";
}

}  // namespace
}  // namespace margindesk
