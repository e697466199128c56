#include "workspace_site.h"

#include "model/definition_document.h"

#include <boost/make_shared.hpp>

namespace fs = boost::filesystem;
using namespace QorBorder;

namespace TestUtil {

namespace {

void addBorder(DefinitionDocument& document, const std::string& id) {
    auto border = boost::make_shared<BorderLayout>();
    border->id = id;
    border->description = "Border " + id;
    document.addBorderLayout(border);
}

void addBlock(DefinitionDocument& document, const std::string& id) {
    auto block = boost::make_shared<BlockLayout>();
    block->id = id;
    block->description = "Block " + id;
    document.addBlockLayout(block);
}

void addLocation(DefinitionDocument& document, const std::string& blockId, const std::string& id,
                 const std::string& styleId) {
    auto location = boost::make_shared<BlockLocation>();
    location->id = id;
    location->blockId = blockId;
    location->styleId = styleId;
    document.addBlockLocation(location);
}

} // namespace

WorkspaceSite::WorkspaceSite(bool withCommon) {
    m_dir.write("site/site.conf", "configurations_directory = ../configurations\n"
                                  "default_configuration = plant\n");
    m_dir.mkdir("configurations/common/nx/format_defs");
    m_dir.write("configurations/plant/configuration.conf",
                withCommon ? "common = common\n" : "# no common configuration\n");
    m_dir.mkdir("site/format_defs");
    m_dir.mkdir("configurations/plant/nx/format_defs");

    DefinitionDocument a("");
    addBorder(a, "A3");
    addBorder(a, "A4");
    addBlock(a, "TB");
    addBlock(a, "PL");
    addLocation(a, "TB", "L1", "");
    addLocation(a, "TB", "L2", "S1");
    addLocation(a, "TB", "L3", "");
    addLocation(a, "PL", "P1", "");
    a.setFieldTranslations(
        {{"DE_TB_TITLE_Drawing", "Zeichnung"}, {"FR_TB_TITLE_Drawing", "Dessin"}});
    a.save(document("docA.fordef"));

    DefinitionDocument b("");
    addBorder(b, "B1");
    addBlock(b, "RB");
    b.setFieldTranslations({{"DE_TB_TITLE_Drawing", "Zeichnung B"}});
    b.save(document("docB.fordef"));

    DefinitionDocument company("");
    addBlock(company, "LOGO");
    company.save(m_dir.path() / "configurations/common/nx/format_defs/company.fordef");

    DefinitionDocument plant("");
    addBlock(plant, "REV");
    plant.save(m_dir.path() / "configurations/plant/nx/format_defs/plant.fordef");

    m_env.set("QORFMT_SITE", site().string());
    m_env.set("QORFMT_CONFIGURATION", nullptr);
    m_env.set("QORFMT_SEARCH_PATH", nullptr);
}

} // namespace TestUtil
