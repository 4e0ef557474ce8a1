// The entry points, called as the system calls them.

#include "com/com_ptr.h"
#include "com/lintara_idl.h"
#include "com/module.h"

#include <olectl.h>

#include <gtest/gtest.h>

namespace lintara::com {
namespace {

class EntryPoints : public testing::Test {
  protected:
    EntryPoints() { EXPECT_TRUE(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))); }
    ~EntryPoints() override { ::CoUninitialize(); }

    static ComPtr<IClassFactory> Factory(REFCLSID classId) {
        ComPtr<IClassFactory> factory;
        EXPECT_EQ(::DllGetClassObject(classId, IID_IClassFactory, factory.UntypedPlace()), S_OK);
        return factory;
    }
};

TEST_F(EntryPoints, MakeObjectsOfBothClasses) {
    ComPtr<ILintara> lintara;
    ComPtr<IDialogsLT> dialogs;
    EXPECT_EQ(Factory(CLSID_Lintara)->CreateInstance(nullptr, IID_ILintara, lintara.UntypedPlace()), S_OK);
    EXPECT_EQ(Factory(CLSID_DialogsLT)->CreateInstance(nullptr, IID_IDialogsLT, dialogs.UntypedPlace()),
              S_OK);
    EXPECT_TRUE(lintara);
    EXPECT_TRUE(dialogs);
}

TEST_F(EntryPoints, EveryObjectIsOneOfItsOwn) {
    const ComPtr<IClassFactory> factory = Factory(CLSID_Lintara);
    ComPtr<IUnknown> first;
    ComPtr<IUnknown> second;
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, first.UntypedPlace()), S_OK);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, second.UntypedPlace()), S_OK);
    EXPECT_FALSE(first == second);
}

TEST_F(EntryPoints, RefuseWhatTheyDoNotHave) {
    void* object = this;
    EXPECT_EQ(::DllGetClassObject(IID_ILintara, IID_IClassFactory, &object), CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(object, nullptr);
    object = this;
    EXPECT_EQ(::DllGetClassObject(CLSID_Lintara, IID_IDispatch, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(::DllGetClassObject(CLSID_Lintara, IID_IClassFactory, nullptr), E_POINTER);

    const ComPtr<IClassFactory> factory = Factory(CLSID_Lintara);
    object = this;
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IDialogsLT, &object), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    object = this;
    EXPECT_EQ(factory->CreateInstance(factory.get(), IID_IUnknown, &object), CLASS_E_NOAGGREGATION);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(factory->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
}

TEST_F(EntryPoints, TheLibraryStaysWhileSomebodyUsesIt) {
    ASSERT_EQ(LiveObjects(), 0);
    EXPECT_EQ(::DllCanUnloadNow(), S_OK);
    ComPtr<IClassFactory> factory = Factory(CLSID_Lintara);
    EXPECT_EQ(::DllCanUnloadNow(), S_FALSE);
    ComPtr<IUnknown> object;
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, object.UntypedPlace()), S_OK);
    factory = nullptr;
    EXPECT_EQ(::DllCanUnloadNow(), S_FALSE);
    object = nullptr;
    EXPECT_EQ(::DllCanUnloadNow(), S_OK);
}

TEST_F(EntryPoints, ALockKeepsTheLibraryWithoutAnObject) {
    ASSERT_EQ(LiveObjects(), 0);
    EXPECT_EQ(Factory(CLSID_Lintara)->LockServer(TRUE), S_OK);
    EXPECT_EQ(::DllCanUnloadNow(), S_FALSE);
    EXPECT_EQ(Factory(CLSID_DialogsLT)->LockServer(FALSE), S_OK);
    EXPECT_EQ(::DllCanUnloadNow(), S_OK);
}

TEST_F(EntryPoints, AFailedCreationLeavesNothing) {
    {
        const ComPtr<IClassFactory> factory = Factory(CLSID_Lintara);
        void* object = nullptr;
        EXPECT_EQ(factory->CreateInstance(nullptr, IID_IPersist, &object), E_NOINTERFACE);
    }
    EXPECT_EQ(::DllCanUnloadNow(), S_OK);
}

}  // namespace
}  // namespace lintara::com
