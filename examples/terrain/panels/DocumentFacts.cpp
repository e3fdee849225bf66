#include "panels/DocumentFacts.h"

#include "documents/Raster.h"
#include "documents/RasterInformation.h"
#include "documents/TerrainDocument.h"
#include "io/ReferenceSystem.h"
#include "language/UnitText.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/utilities/Url.h>

#include <QtCore/QFileInfo>
#include <QtCore/QObject>

namespace terrain {

namespace {

QString or_unknown(const QString& text)
{
    return text.isEmpty() ? QObject::tr("unknown") : text;
}

/// Whether nobody may write a file. Who may write everything may write this one too, and is told all the
/// same.
bool is_read_only(const QString& file)
{
    const QFileInfo info(file);
    const QFile::Permissions anybody = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    return info.exists() && (!info.isWritable() || !(info.permissions() & anybody));
}

QString sign_text(housekeeping::DataSource::Sign sign)
{
    return sign == housekeeping::DataSource::Depth ? QObject::tr("depth, down is positive")
                                                   : QObject::tr("elevation, up is positive");
}

/// What the data source says of a document's numbers.
void add_source(std::vector<Fact>& facts, const TerrainDocument& document)
{
    const auto sp_source = document.datasource();
    if (!sp_source) {
        return;
    }
    facts.push_back({QObject::tr("Heights in"), height_unit_text(sp_source)});
    facts.push_back({QObject::tr("Vertical sign"), sign_text(sp_source->z_sign())});
    const auto* const p_information
        = dynamic_cast<const RasterInformation*>(sp_source->data_information().get());
    if (p_information) {
        facts.push_back({QObject::tr("Band"), QString::number(p_information->band())});
    }
}

} // namespace

RasterFacts::RasterFacts(const Raster& raster)
    : size(QObject::tr("%1 × %2 cells").arg(QString::number(raster.columns), QString::number(raster.rows)))
    , data_type(QString::fromStdString(raster.data_type))
    , reference_system(QString::fromStdString(reference_system_name(raster.reference_system)))
{ }

QString source_of(const TerrainDocument& document)
{
    const auto sp_source = document.datasource();
    return QString::fromStdString(
        sp_source ? tarqa::utilities::file_from_url(sp_source->url()) : document.title());
}

QStringList states_of(const TerrainDocument& document)
{
    QStringList states;
    if (document.is_modified()) {
        states.append(QObject::tr("modified"));
    }
    if (housekeeping::DocumentManager::const_instance().document_busy(document.id())) {
        states.append(QObject::tr("busy"));
    }
    if (document.reduction() > 1) {
        states.append(QObject::tr("overview"));
    }
    if (document.own_file().empty()) {
        states.append(QObject::tr("no file of its own"));
    } else if (is_read_only(QString::fromStdString(document.own_file()))) {
        states.append(QObject::tr("read-only file"));
    }
    return states;
}

std::vector<Fact> facts_of(const TerrainDocument& document, const RasterFacts& raster)
{
    std::vector<Fact> facts = {{QObject::tr("File"), source_of(document)},
        {QObject::tr("Format"), or_unknown(QString::fromStdString(document.source_format()))},
        {QObject::tr("Size"), raster.size}, {QObject::tr("Cells as"), or_unknown(raster.data_type)}};
    add_source(facts, document);
    facts.push_back({QObject::tr("Reference system"), or_unknown(raster.reference_system)});
    if (document.reduction() > 1) {
        facts.push_back(
            {QObject::tr("Overview"), QObject::tr("1 of %1 columns and rows").arg(document.reduction())});
    }
    facts.push_back({QObject::tr("Saved to"),
        document.own_file().empty() ? QObject::tr("no file of its own; Save asks for one")
                                    : QString::fromStdString(document.own_file())});
    const QStringList states = states_of(document);
    facts.push_back(
        {QObject::tr("State"), states.isEmpty() ? QObject::tr("as in its file") : states.join(", ")});
    return facts;
}

} // namespace terrain
