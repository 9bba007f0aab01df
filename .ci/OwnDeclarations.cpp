// A plugin for clang-tidy: its checks look at this project's declarations only. Without it they walk through all of
// Qt's again for every source, which takes ten times as long and finds nothing that would be reported.

#include <clang/AST/ASTConsumer.h>
#include <clang/AST/ASTContext.h>
#include <clang/AST/DeclGroup.h>
#include <clang/Basic/SourceManager.h>
#include <clang/Frontend/FrontendAction.h>
#include <clang/Frontend/FrontendPluginRegistry.h>
#include <memory>
#include <string>
#include <vector>

namespace {

class OwnDeclarations : public clang::ASTConsumer
{
public:
    bool HandleTopLevelDecl(clang::DeclGroupRef group) override
    {
        for (clang::Decl* declaration : group) {
            const clang::SourceManager& sources = declaration->getASTContext().getSourceManager();
            if (!sources.isInSystemHeader(sources.getExpansionLoc(declaration->getLocation()))) {
                m_declarations.push_back(declaration);
            }
        }
        return true;
    }

    void HandleTranslationUnit(clang::ASTContext& context) override { context.setTraversalScope(m_declarations); }

private:
    std::vector<clang::Decl*> m_declarations;
};

class SetScope : public clang::PluginASTAction
{
protected:
    std::unique_ptr<clang::ASTConsumer> CreateASTConsumer(clang::CompilerInstance& /*compiler*/,
                                                          llvm::StringRef /*file*/) override
    {
        return std::make_unique<OwnDeclarations>();
    }

    bool ParseArgs(const clang::CompilerInstance& /*compiler*/, const std::vector<std::string>& /*arguments*/) override
    {
        return true;
    }

    ActionType getActionType() override { return AddBeforeMainAction; }
};

const clang::FrontendPluginRegistry::Add<SetScope> registration("own-declarations",
                                                                "limits checks to the project's declarations");

} // namespace
