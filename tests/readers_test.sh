#!/usr/bin/env bash
# Whether other programs read what a conversion writes.
# Usage: tests/readers_test.sh gpsbabel|mkgmap|ogr2ogr MAKE_SAMPLE SONDRIX_BATCH WRITE_WPT
#        tests/readers_test.sh xmllint|gpsbabel|ogrinfo|gdalinfo|sqlite3|cog MAKE_SAMPLE --chart SONDRIX_CHART
# Exit status: 0 all was read, 1 not so, 77 the reader isn't installed.
set -euo pipefail
export LC_ALL=C

reader=$1 make_sample=$2 sondrix_batch=$3 write_wpt=$4
# GDAL's own check of the cloud optimized layout is a module of the system's Python.
check_cog=(/usr/bin/python3 -m osgeo_utils.samples.validate_cloud_optimized_geotiff --full-check=yes)
if [ "$reader" = cog ]; then
  if ! "${check_cog[0]}" -c 'import osgeo_utils.samples.validate_cloud_optimized_geotiff' 2>/dev/null; then
    echo "skipped: python3-gdal is not installed"
    exit 77
  fi
elif ! command -v "$reader" >/dev/null; then
  echo "skipped: $reader is not installed"
  exit 77
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
mkdir out

fail() {
  echo "failed: $*" >&2
  exit 1
}

# chart_with_READER: what a chart of the made lake writes; the .csv holds every sounding, the .gpx those used.
chart_with_xmllint() {
  xmllint --noout a.gpx
  [ "$(xmllint --xpath 'count(//*[local-name() = "trkpt"])' a.gpx)" -eq "$used" ] || fail "points of the .gpx"
}
chart_with_gpsbabel() {
  [ "$(gpsbabel -t -i gpx -f a.gpx -o unicsv -F - | tail -n +2 | wc -l)" -eq "$used" ] || fail "points of the .gpx"
}
chart_with_ogrinfo() {
  count_is() { ogrinfo -ro -so "$@" | grep -qx "Feature Count: $wanted" || fail "$*: not $wanted features"; }
  wanted=$all count_is a.gpkg soundings
  wanted=$(grep -c '<trk>' a.gpx) count_is a.gpkg tracks
  wanted=$all count_is a.csv a
  wanted=$used count_is CSV:a.xyz a -oo HEADERS=NO
  wanted=$(grep -c '"type":"Feature",' a.geojson)
  [ "$wanted" -gt 5 ] || fail "only $wanted contours"
  for file in a.geojson a.shp a.kml "a.gpkg contours"; do count_is $file $([[ $file == *\ * ]] || echo a); done
  for file in "a.shp a" "a.gpkg contours" "a.gpkg areas"; do
    ogrinfo -ro -so $file | grep -q 'ID\["EPSG",32637\]\]$' || fail "$file: not in the chart's projection"
  done
  # Areas that GEOS finds at fault.
  wanted=0 count_is -dialect SQLite -sql "SELECT 1 FROM areas WHERE NOT ST_IsValid(geom)" a.gpkg
}
chart_with_gdalinfo() {
  gdalinfo a.tif >info
  for line in 'ID["EPSG",32637]]' '  Description = depth' '  Description = uncertainty' '  LAYOUT=COG'; do
    grep -qF -- "$line" info || fail "the .tif has no line \"$line\""
  done
  [ "$(grep -c 'NoData Value=nan' info)$(grep -c 'Unit Type: m' info)$(grep -c Overviews: info)" = 222 ] || fail "bands: $(tr "\n" " " <info)"
}
chart_with_cog() { "${check_cog[@]}" a.tif; }
chart_with_sqlite3() {
  [ "$(sqlite3 a.gpkg 'PRAGMA integrity_check')" = ok ] || fail "the .gpkg has faults"
  [ "$(sqlite3 a.gpkg 'SELECT group_concat(f_table_name) FROM layer_styles WHERE styleQML LIKE "%<qgis%" AND useAsDefault')" = \
    soundings,tracks,contours,areas ] || fail "styles of the .gpkg"
  for layer in soundings tracks contours areas; do
    [ "$(sqlite3 a.gpkg "SELECT (SELECT count(*) FROM rtree_${layer}_geom) = (SELECT count(geom) FROM $layer),
      (SELECT count(*) FROM $layer) > 0, rtreecheck('rtree_${layer}_geom')")" = "1|1|ok" ] || fail "the index of $layer"
  done
}
if [ "$sondrix_batch" = --chart ]; then
  "$make_sample" lake lake
  "$4" -o a.csv -o a.gpx -o a.gpkg -o a.xyz -o a.tif -o a.geojson -o a.shp -o a.kml lake >said
  all=$(tail -n +2 a.csv | wc -l)
  used=$(wc -l <a.xyz)
  [ "$used" -gt 90000 ] && [ "$all" -gt "$used" ] || fail "the lake: $(tail -5 said)"
  "chart_with_$reader"
  echo "$all soundings, $used used"
  exit 0
fi

"$make_sample" export export.csv --mixed
"$make_sample" three three.txt --crlf --semicolon
"$make_sample" log boat.log
# Metres between two points: the map compiler takes no more than 255 points of the type in so small a place.
step=0
[ "$reader" != mkgmap ] || step=20
"$sondrix_batch" -o out -s DistDiff=$step -s DepthDiff=0 -s MaxDiff=40 export.csv three.txt boat.log

# same NAME WANTED READ: two lists of "latitude longitude", alike to 1e-6 degrees, point by point.
same() {
  local count
  count=$(wc -l <"$2")
  [ "$count" -gt 0 ] || fail "$1 holds no point"
  [ "$(wc -l <"$3")" -eq "$count" ] || fail "$1: $(wc -l <"$3") points were read of $count"
  paste -d ' ' "$2" "$3" | awk -v name="$1" '
    function far(a, b) { return a - b > 1.0000001e-6 || b - a > 1.0000001e-6 }
    far($1, $3) || far($2, $4) { print "failed: " name ", point " NR ": " $0; bad = 1; exit }
    END { exit bad }'
  echo "$1: $count points read"
}

gpx_points() { sed -n "s/.*<$1 lat=\"\([^\"]*\)\" lon=\"\([^\"]*\)\".*/\1 \2/p"; }

read_with_gpsbabel() {
  local plt
  for plt in out/*.plt; do
    tr -d '\r' <"$plt" | awk -F, 'NR > 6 && NF { print $1, $2 }' >wanted
    [ "$(sed -n '6s/\r//p' "$plt")" -eq "$(wc -l <wanted)" ] || fail "$plt announces another number of points"
    gpsbabel -i ozi -f "$plt" -o gpx -F - | gpx_points trkpt >found
    same "$plt" wanted found
  done
  "$write_wpt" >marks.wpt
  tr -d '\r' <marks.wpt | awk -F, 'NR > 4 && NF { print $3, $4 }' >wanted
  gpsbabel -i ozi -f marks.wpt -o gpx -F - | gpx_points wpt >found
  same marks.wpt wanted found
}

# A log's map asks for more bits than the compiler has; it says so and goes on with 24.
read_with_mkgmap() {
  local mp tile=63240000 missing
  for mp in out/*.mp; do
    tile=$((tile + 1))
    mkdir "img$tile"
    mkgmap --code-page=1251 --mapname="$tile" --output-dir="img$tile" "$mp" >"img$tile.txt" 2>&1 ||
      { cat "img$tile.txt"; fail "$mp was not compiled"; }
    ! grep -v 'in level 0 resolution 28, using 24 instead' "img$tile.txt" | grep -E 'SEVERE|ERROR|Exceptions: [1-9]' ||
      fail "$mp was compiled with errors"
    # The labels stand in the map as texts with a zero behind them.
    tr -d '\r' <"$mp" | sed -n 's/^Label=//p' | sort -u >wanted
    tr '\0' '\n' <"img$tile/$tile.img" | sort -u >found
    [ -s wanted ] || fail "$mp holds no point"
    missing=$(comm -23 wanted found)
    [ -z "$missing" ] || fail "$mp: labels that didn't come into the map: $missing"
    echo "$mp: $(grep -c '^\[POI\]' "$mp") points of $(wc -l <wanted) labels compiled"
  done
}

# read_list FILE LATITUDE LONGITUDE HEAD_LINES: the columns are counted from 1. The reader has to be told that the list
# is a table without names; a head line becomes a row without a place.
read_list() {
  tail -n "+$(($4 + 1))" "$1" | tr -d '\r' | awk -F, -v lat="$2" -v lon="$3" 'NF { print $lat, $lon }' >wanted
  ogr2ogr -f CSV found.csv "CSV:$1" -oo HEADERS=NO -oo "Y_POSSIBLE_NAMES=field_$2" -oo "X_POSSIBLE_NAMES=field_$3" \
    -lco GEOMETRY=AS_YX -lco SEPARATOR=SEMICOLON
  awk -F ';' -v head="$4" 'NR > 1 + head { print $1, $2 }' found.csv >found
  rm -f found.csv
  same "$1" wanted found
}

read_with_ogr2ogr() {
  read_list out/export.txt 1 2 0
  read_list out/three.txt 1 2 0
  read_list out/boat.drd.txt 1 2 1
  read_list out/boat.srf.txt 2 1 0
}

"read_with_$reader"
