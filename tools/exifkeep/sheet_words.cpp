// SPDX-License-Identifier: MIT
#include "sheet_words.h"

#include <algorithm>

namespace program {
namespace {

constexpr SheetWords words[] = {
    {"en", "Picture properties", "Language", "This file has no Exif data.",
     "This file could not be opened.", "The picture is damaged: part of the preview is missing."},
    {"de", "Bildeigenschaften", "Sprache", "Diese Datei enthält keine Exif-Daten.",
     "Diese Datei konnte nicht geöffnet werden.",
     "Das Bild ist beschädigt: Ein Teil der Vorschau fehlt."},
    {"es", "Propiedades de la imagen", "Idioma", "Este archivo no contiene datos Exif.",
     "No se pudo abrir este archivo.",
     "La imagen está dañada: falta una parte de la vista previa."},
    {"fi", "Kuvan ominaisuudet", "Kieli", "Tässä tiedostossa ei ole Exif-tietoja.",
     "Tätä tiedostoa ei voitu avata.", "Kuva on vaurioitunut: osa esikatselusta puuttuu."},
    {"fr", "Propriétés de l'image", "Langue", "Ce fichier ne contient pas de données Exif.",
     "Ce fichier n'a pas pu être ouvert.",
     "L'image est endommagée : une partie de l'aperçu manque."},
    {"it", "Proprietà dell'immagine", "Lingua", "Questo file non contiene dati Exif.",
     "Impossibile aprire questo file.",
     "L'immagine è danneggiata: manca una parte dell'anteprima."},
    {"ja", "画像のプロパティ", "言語", "このファイルにはExif情報がありません。",
     "このファイルを開けませんでした。",
     "画像が破損しているため、プレビューの一部が欠けています。"},
    {"ko", "이미지 속성", "언어", "이 파일에는 Exif 정보가 없습니다.", "이 파일을 열 수 없습니다.",
     "이미지가 손상되어 미리보기의 일부가 없습니다."},
    {"nl", "Afbeeldingseigenschappen", "Taal", "Dit bestand bevat geen Exif-gegevens.",
     "Dit bestand kon niet worden geopend.",
     "De afbeelding is beschadigd: een deel van het voorbeeld ontbreekt."},
    {"pt", "Propriedades da imagem", "Idioma", "Este ficheiro não contém dados Exif.",
     "Não foi possível abrir este ficheiro.",
     "A imagem está danificada: falta uma parte da pré-visualização."},
    {"sv", "Bildegenskaper", "Språk", "Den här filen innehåller inga Exif-data.",
     "Den här filen kunde inte öppnas.", "Bilden är skadad: en del av förhandsvisningen saknas."},
    {"zh-CN", "图像属性", "语言", "此文件不包含 Exif 信息。", "无法打开此文件。",
     "图像已损坏，预览缺少一部分。"},
    {"zh-TW", "影像屬性", "語言", "此檔案不含 Exif 資訊。", "無法開啟此檔案。",
     "影像已損毀，預覽缺少一部分。"},
};

}  // namespace

const SheetWords& sheetWords(std::string_view tag) {
  const auto* found = std::find_if(std::begin(words), std::end(words),
                                   [tag](const SheetWords& entry) { return entry.tag == tag; });
  return found == std::end(words) ? words[0] : *found;
}

}  // namespace program
