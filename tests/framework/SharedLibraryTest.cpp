#include <dlfcn.h>
#include <gtest/gtest.h>

#include "model/contract/MessageBoxCtrl.h"
#include "tests/framework/FrameworkModule.h"

namespace margindesk {
namespace {

struct TSilentMessages : TCustomMessageBoxCtrl {
  void ShowMessage(std::string_view) override {}
  std::int32_t ShowConfirmation(std::string_view) override { return 0; }
};

TEST(SharedLibrary, ALoadedLibrarySharesServicesCodesAndClassesAndReallyGoes) {
  void* library = dlopen(FRAMEWORK_MODULE, RTLD_NOW | RTLD_LOCAL);
  ASSERT_NE(library, nullptr) << dlerror();
  const auto getEntry = reinterpret_cast<TGetModuleEntry>(dlsym(library, "GetModuleEntry"));
  ASSERT_NE(getEntry, nullptr) << dlerror();
  const TModuleEntry& entry = *getEntry();

  TSilentMessages messages;
  {
    const TServiceScope<TCustomMessageBoxCtrl> scope(messages);
    EXPECT_EQ(entry.FGetMessages(), &messages) << "one slot for both sides";
  }
  EXPECT_EQ(entry.FGetMessages(), nullptr);

  const TCode code = entry.FMakeCode("FROM THE MODULE");
  EXPECT_EQ(code, TCode("FROM THE MODULE"));
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
