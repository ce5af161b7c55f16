#include "world/gdal/Shapes.h"

#include "world/gdal/Datasets.h"
#include "world/gdal/ShapeStream.h"

#include <algorithm>
#include <cmath>
#include <cpl_error.h>
#include <cpl_string.h>
#include <limits>
#include <map>
#include <ogrsf_frmts.h>

namespace vardenix {

namespace {

using Transform = std::unique_ptr<OGRCoordinateTransformation>;

constexpr const char* ValueField = "value";
constexpr const char* CountField = "points";

// Takes the shapes of a feature's geometry apart.
class ShapeTaker {
public:
    ShapeTaker(ShapeWriter& out, OGRCoordinateTransformation& transform)
        : out_(out), transform_(transform) {}

    void Take(const OGRGeometry& geometry, StreamedShape& shape) {
        if (geometry.hasCurveGeometry() != 0) {
            const std::unique_ptr<OGRGeometry> straight(geometry.getLinearGeometry());
            if (straight)
                Take(*straight, shape);
            return;
        }
        switch (wkbFlatten(geometry.getGeometryType())) {
        case wkbPoint: {
            const OGRPoint& point = *geometry.toPoint();
            if (point.IsEmpty() == 0)
                Write(ShapeForm::Point, {point.getX()}, {point.getY()}, shape);
            break;
        }
        case wkbLineString:
            TakeLine(ShapeForm::Line, *geometry.toLineString(), shape);
            break;
        case wkbPolygon:
        case wkbTriangle:
            TakeRings(*geometry.toPolygon(), shape);
            break;
        default:
            if (const auto* parts = dynamic_cast<const OGRGeometryCollection*>(&geometry))
                for (const OGRGeometry* part : *parts)
                    Take(*part, shape);
        }
    }

private:
    void TakeRings(const OGRPolygon& area, StreamedShape& shape) {
        ShapeForm form = ShapeForm::Area;
        for (const OGRLinearRing* ring : area) {
            TakeLine(form, *ring, shape);
            form = ShapeForm::Hole;
        }
    }

    void TakeLine(ShapeForm form, const OGRSimpleCurve& line, StreamedShape& shape) {
        std::vector<double> x;
        std::vector<double> y;
        for (int i = 0; i < line.getNumPoints(); ++i) {
            x.push_back(line.getX(i));
            y.push_back(line.getY(i));
        }
        Write(form, std::move(x), std::move(y), shape);
    }

    void Write(ShapeForm form, std::vector<double> x, std::vector<double> y,
               StreamedShape& shape) {
        if (x.empty())
            return;
        std::vector<int> known(x.size());
        // Whatever it says of single points is no damage of the map.
        const CPLErrorStateBackuper said;
        transform_.Transform(static_cast<int>(x.size()), x.data(), y.data(), nullptr,
                             known.data());
        shape.Form = form;
        shape.Points.clear();
        for (size_t i = 0; i < x.size(); ++i)
            if (known[i] != 0 && std::isfinite(x[i]) && std::isfinite(y[i]))
                shape.Points.push_back({x[i], y[i]});
        if (!shape.Points.empty())
            out_.Write(shape);
    }

    ShapeWriter& out_;
    OGRCoordinateTransformation& transform_;
};

int32_t Whole(const OGRFeature& feature, int field, int32_t otherwise) {
    if (field < 0 || feature.IsFieldSetAndNotNull(field) == 0)
        return otherwise;
    const double value = feature.GetFieldAsDouble(field);
    if (!(value >= std::numeric_limits<int32_t>::min() &&
          value <= std::numeric_limits<int32_t>::max()))
        return otherwise;
    return static_cast<int32_t>(std::nearbyint(value));
}

Transform Leading(const std::string& file, const OGRSpatialReference& from,
                  const OGRSpatialReference& to) {
    Transform transform(OGRCreateCoordinateTransformation(&from, &to));
    if (!transform)
        Refuse(file, LibrarySays());
    return transform;
}

OGRSpatialReference SystemOfLayer(const ShapeRequest& request, const OGRLayer& layer) {
    if (!request.MapSystem.empty())
        return SystemOf(request.From, request.MapSystem);
    const OGRSpatialReference* own = const_cast<OGRLayer&>(layer).GetSpatialRef();
    if (own == nullptr)
        Refuse(request.From, "it does not tell its reference system; name it");
    OGRSpatialReference system = *own;
    system.SetAxisMappingStrategy(OAMS_TRADITIONAL_GIS_ORDER);
    return system;
}

void TakeLayer(const ShapeRequest& request, OGRLayer& layer, ShapeWriter& out) {
    const Transform transform = Leading(request.From, SystemOfLayer(request, layer),
                                        SystemOf(request.From, request.System));
    ShapeTaker taker(out, *transform);
    OGRFeatureDefn& fields = *layer.GetLayerDefn();
    const int kind = fields.GetFieldIndex(request.KindField.c_str());
    const int name = fields.GetFieldIndex(request.NameField.c_str());
    const int value = fields.GetFieldIndex(ValueField);
    const int count = fields.GetFieldIndex(CountField);
    for (const OGRFeatureUniquePtr& feature : layer) {
        const OGRGeometry* geometry = feature->GetGeometryRef();
        if (geometry == nullptr)
            continue;
        StreamedShape shape;
        shape.Kind = kind < 0 ? layer.GetName() : feature->GetFieldAsString(kind);
        shape.Name = name < 0 ? "" : feature->GetFieldAsString(name);
        shape.Value = Whole(*feature, value, 0);
        shape.Told = Whole(*feature, count, -1);
        taker.Take(*geometry, shape);
    }
}

std::unique_ptr<OGRGeometry> GeometryOf(const StreamedShape& shape) {
    if (shape.Form == ShapeForm::Point)
        return std::make_unique<OGRPoint>(shape.Points[0][0], shape.Points[0][1]);
    auto line = shape.Form == ShapeForm::Area ? std::make_unique<OGRLinearRing>()
                                              : std::make_unique<OGRLineString>();
    for (const auto& [x, y] : shape.Points)
        line->addPoint(x, y);
    if (shape.Form != ShapeForm::Area)
        return line;
    line->closeRings();
    auto area = std::make_unique<OGRPolygon>();
    area->addRingDirectly(static_cast<OGRLinearRing*>(line.release()));
    return area;
}

struct FormWords {
    const char* Driver;
    const char* Ending;
};

FormWords WordsOf(const ShapeRequest& request) {
    if (request.Form == "geojson")
        return {"GeoJSON", ".geojson"};
    if (request.Form == "gpkg")
        return {"GPKG", ".gpkg"};
    return {"ESRI Shapefile", ".shp"};
}

// Layers of a map that is made, one for each form of shapes where its kind of file wants
// that.
class MapMaker {
public:
    MapMaker(const ShapeRequest& request, const std::vector<StreamedShape>& shapes)
        : request_(request), words_(WordsOf(request)),
          system_(SystemOf(request.To, request.System)) {
        std::map<ShapeForm, int> forms;
        for (const StreamedShape& shape : shapes)
            ++forms[shape.Form];
        isOneForm_ = forms.size() < 2;
    }

    void Add(const StreamedShape& shape) {
        OGRLayer& layer = LayerFor(shape.Form);
        const std::unique_ptr<OGRGeometry> geometry = GeometryOf(shape);
        OGRFeature feature(layer.GetLayerDefn());
        feature.SetField(request_.KindField.c_str(), shape.Kind.c_str());
        if (!shape.Name.empty())
            feature.SetField(request_.NameField.c_str(), shape.Name.c_str());
        feature.SetField(ValueField, shape.Value);
        feature.SetField(CountField, shape.Told);
        if (transform_ && geometry->transform(transform_.get()) != OGRERR_NONE)
            Refuse(request_.To, "a feature lies beyond what longitude and latitude can "
                                "tell");
        feature.SetGeometry(geometry.get());
        if (layer.CreateFeature(&feature) != OGRERR_NONE)
            Refuse(request_.To, LibrarySays());
    }

    // The library tells of a full disk by its last words at the latest.
    void Close() {
        CPLErrorReset();
        layers_.clear();
        files_.clear();
        if (CPLGetLastErrorType() >= CE_Failure)
            Refuse(request_.To, LibrarySays());
    }

private:
    static constexpr std::array FormNames{"points", "lines", "areas"};

    bool IsShapefile() const { return request_.Form == "shp"; }

    std::string NameFor(ShapeForm form) const {
        return request_.Stem +
               (isOneForm_ || request_.Form == "geojson"
                    ? ""
                    : std::string("-") + FormNames[static_cast<size_t>(form)]);
    }

    Dataset MakeFile(const std::string& name) const {
        const std::string path = request_.To + "/" + name + words_.Ending;
        Dataset made(GetGDALDriverManager()
                         ->GetDriverByName(words_.Driver)
                         ->Create(path.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
        if (!made)
            Refuse(path, LibrarySays());
        return made;
    }

    OGRwkbGeometryType TypeFor(ShapeForm form) const {
        if (request_.Form == "geojson")
            return wkbUnknown;
        constexpr std::array types{wkbPoint, wkbLineString, wkbPolygon};
        return types[static_cast<size_t>(form)];
    }

    OGRLayer& LayerFor(ShapeForm form) {
        const std::string name = NameFor(form);
        OGRLayer*& layer = layers_[name];
        if (layer == nullptr) {
            if (files_.empty() || IsShapefile())
                files_.push_back(MakeFile(IsShapefile() ? name : request_.Stem));
            layer = &MakeLayer(*files_.back(), name, form);
        }
        return *layer;
    }

    OGRLayer& MakeLayer(GDALDataset& file, const std::string& name, ShapeForm form) {
        CPLStringList options;
        OGRSpatialReference system = system_;
        if (request_.Form == "geojson") {
            options.AddNameValue("COORDINATE_PRECISION", "9");
            system = Degrees();
            transform_ = Leading(request_.To, system_, system);
        } else if (IsShapefile()) {
            options.AddNameValue("ENCODING", "UTF-8");
        }
        OGRLayer* layer =
            file.CreateLayer(name.c_str(), &system, TypeFor(form), options.List());
        if (layer == nullptr)
            Refuse(request_.To, LibrarySays());
        for (const auto& [field, type] :
             {std::pair{request_.KindField.c_str(), OFTString},
              {request_.NameField.c_str(), OFTString},
              {ValueField, OFTInteger},
              {CountField, OFTInteger}}) {
            OGRFieldDefn definition(field, type);
            if (layer->CreateField(&definition) != OGRERR_NONE)
                Refuse(request_.To, LibrarySays());
        }
        return *layer;
    }

    const ShapeRequest& request_;
    FormWords words_;
    OGRSpatialReference system_;
    bool isOneForm_ = true;
    Transform transform_;
    std::vector<Dataset> files_;
    std::map<std::string, OGRLayer*> layers_;
};

} // namespace

void ReadShapes(const ShapeRequest& request) {
    const Dataset map = OpenDataset(request.From, GDAL_OF_VECTOR, ReadableShapes,
                                    "GeoJSON, GeoPackage and Shapefile");
    ShapeWriter out(request.To);
    CPLErrorReset();
    for (OGRLayer* layer : map->GetLayers())
        TakeLayer(request, *layer, out);
    // A reader that meets damage stops in the middle, and says so only here.
    if (CPLGetLastErrorType() >= CE_Failure)
        Refuse(request.From, LibrarySays());
    out.Close();
}

void WriteShapes(const ShapeRequest& request) {
    ShapeReader in(request.From);
    std::vector<StreamedShape> shapes;
    for (StreamedShape shape; in.Read(shape);)
        shapes.push_back(shape);
    MapMaker map(request, shapes);
    for (const StreamedShape& shape : shapes)
        map.Add(shape);
    map.Close();
}

} // namespace vardenix
