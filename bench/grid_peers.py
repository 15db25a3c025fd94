#!/usr/bin/env python3
"""Grids soundings of made waters by other programs and compares with the true bed; called by bench/compare-grid.

Usage: grid_peers.py peers STEM SPACING
         reads STEM.xyz and STEM-bed.asc, writes STEM-peers.npz: truth, near, hull, and a grid for each peer
       grid_peers.py table NAME:SPACING:STEM[:OURS.tif]...
         prints the tables of the waters

All grids lie on the true bed's nodes: rows from the north, metres, positive down, not a number where there is none.
near are the cells in the water within one and a half line spacings of a sounding, hull those of them that lie inside
a triangulation of the soundings.
"""

import json
import os
import subprocess
import sys
import tempfile

import numpy as np
from scipy.spatial import cKDTree

REACH = 1.5  # line spacings from a sounding
NEIGHBOURS = 48  # of the thin plate spline
PEERS = ["linear", "invdistnn", "surface 0", "surface 0.25", "surface 0.5", "spline 48"]


class Nodes:
    """The middles of a text grid's cells."""

    def __init__(self, path):
        with open(path) as file:
            head = dict(line.split() for line in (next(file) for _ in range(6)))
            self.truth = np.loadtxt(file, ndmin=2)
        self.truth[self.truth == float(head["NODATA_value"])] = np.nan
        self.rows, self.columns = self.truth.shape
        self.cell = float(head["cellsize"])
        self.west, self.south = float(head["xllcorner"]), float(head["yllcorner"])
        self.north = self.south + self.rows * self.cell
        self.east = self.west + self.columns * self.cell
        self.x = self.west + (np.arange(self.columns) + 0.5) * self.cell
        self.y = self.north - (np.arange(self.rows) + 0.5) * self.cell

    def places(self, mask):
        row, column = np.nonzero(mask)
        return np.column_stack([self.x[column], self.y[row]])


def run(*words, stdout=None):
    subprocess.run([str(word) for word in words], check=True, stdout=stdout or subprocess.DEVNULL)


def read_raster(path, folder):
    """All bands of a raster as 64-bit floats, not a number where it has no value, and where it lies."""
    info = json.loads(subprocess.run(["gdalinfo", "-json", path], check=True, capture_output=True).stdout)
    columns, rows = info["size"]
    raw = os.path.join(folder, "raster.img")
    run("gdal_translate", "-q", "-of", "ENVI", "-co", "INTERLEAVE=BSQ", "-ot", "Float64", path, raw)
    bands = np.fromfile(raw).reshape(len(info["bands"]), rows, columns)
    for band, told in zip(bands, info["bands"]):
        nodata = told.get("noDataValue")
        if isinstance(nodata, (int, float)):
            band[band == nodata] = np.nan
    return bands, info["geoTransform"]


def gdal_grid(xyz, nodes, algorithm, folder):
    layer = os.path.join(folder, "soundings.vrt")
    with open(layer, "w") as file:
        file.write(
            "<OGRVRTDataSource><OGRVRTLayer name='soundings'>"
            f"<SrcDataSource>CSV:{os.path.join(folder, 'soundings.csv')}</SrcDataSource>"
            "<GeometryType>wkbPoint25D</GeometryType>"
            "<GeometryField encoding='PointFromColumns' x='x' y='y' z='z'/></OGRVRTLayer></OGRVRTDataSource>"
        )
    np.savetxt(os.path.join(folder, "soundings.csv"), xyz, "%.3f", ",", header="x,y,z", comments="")
    grid = os.path.join(folder, "grid.tif")
    run("gdal_grid", "-q", "-a", algorithm + ":nodata=nan", "-ot", "Float64", "-l", "soundings",
        "-txe", nodes.west, nodes.east, "-tye", nodes.north, nodes.south,
        "-outsize", nodes.columns, nodes.rows, layer, grid)
    bands, place = read_raster(grid, folder)
    return bands[0] if place[5] < 0 else bands[0][::-1]


def block_medians(xyz, nodes, folder):
    """As the manual of surface asks for; the region and the step of the nodes, for the programs of GMT."""
    source, medians = os.path.join(folder, "soundings.xyz"), os.path.join(folder, "medians.xyz")
    np.savetxt(source, xyz, "%.3f")
    region = (f"-R{nodes.x[0]:.3f}/{nodes.x[-1]:.3f}/{nodes.y[-1]:.3f}/{nodes.y[0]:.3f}", f"-I{nodes.cell}")
    with open(medians, "w") as file:
        run("gmt", "blockmedian", source, *region, "--FORMAT_FLOAT_OUT=%.10g", stdout=file)
    return medians, region


def surface(medians, region, tension, folder):
    grid = os.path.join(folder, "surface.nc")
    run("gmt", "surface", medians, *region, f"-T{tension}", f"-G{grid}=nf", "-Vq")
    raw = os.path.join(folder, "surface.f64")
    with open(raw, "wb") as file:
        run("gmt", "grd2xyz", grid, "-ZTLd", stdout=file)
    return np.fromfile(raw)


def thin_plate(points, depths, places):
    """The thin plate spline (Duchon 1977) through the nearest soundings of each place, with a plane."""
    _, near = cKDTree(points).query(places, NEIGHBOURS)
    values = np.empty(len(places))
    for begin in range(0, len(places), 2000):
        part = slice(begin, begin + 2000)
        at = points[near[part]] - places[part, None]
        scale = np.abs(at).max(axis=(1, 2))
        at /= scale[:, None, None]
        count = len(at)
        system = np.zeros((count, NEIGHBOURS + 3, NEIGHBOURS + 3))
        away = ((at[:, :, None] - at[:, None]) ** 2).sum(axis=3)
        system[:, :NEIGHBOURS, :NEIGHBOURS] = kernel(away)
        system[:, :NEIGHBOURS, NEIGHBOURS] = system[:, NEIGHBOURS, :NEIGHBOURS] = 1
        system[:, :NEIGHBOURS, NEIGHBOURS + 1:] = at
        system[:, NEIGHBOURS + 1:, :NEIGHBOURS] = at.transpose(0, 2, 1)
        right = np.zeros((count, NEIGHBOURS + 3))
        right[:, :NEIGHBOURS] = depths[near[part]]
        found = np.linalg.solve(system, right[..., None])[..., 0]
        values[part] = (found[:, :NEIGHBOURS] * kernel((at ** 2).sum(axis=2))).sum(axis=1) + found[:, NEIGHBOURS]
    return values


def kernel(square):
    return 0.5 * square * np.log(np.where(square > 0, square, 1))


def make_peers(stem, spacing):
    xyz, nodes = np.loadtxt(stem + ".xyz"), Nodes(stem + "-bed.asc")
    away, _ = cKDTree(xyz[:, :2]).query(nodes.places(np.ones_like(nodes.truth)))
    near = ~np.isnan(nodes.truth) & (away.reshape(nodes.truth.shape) <= REACH * spacing)
    grids = {"truth": nodes.truth}
    with tempfile.TemporaryDirectory() as folder:
        grids["linear"] = gdal_grid(xyz, nodes, "linear", folder)
        inside = gdal_grid(xyz, nodes, "linear:radius=0", folder)
        grids["invdistnn"] = gdal_grid(xyz, nodes, f"invdistnn:radius={2 * spacing}:max_points=12", folder)
        medians, region = block_medians(xyz, nodes, folder)
        for tension in ("0", "0.25", "0.5"):
            grids["surface " + tension] = surface(medians, region, tension, folder).reshape(nodes.truth.shape)
        merged = np.loadtxt(medians)
    spline = np.full_like(nodes.truth, np.nan)
    spline[near] = thin_plate(merged[:, :2], merged[:, 2], nodes.places(near))
    grids["spline 48"] = spline
    raw = {}
    for x, y, depth in xyz:
        raw.setdefault((x, y), []).append(depth)
    points = np.array(list(raw))
    spline = np.full_like(nodes.truth, np.nan)
    spline[near] = thin_plate(points, np.array([np.median(depths) for depths in raw.values()]), nodes.places(near))
    grids["spline 48 of all"] = spline
    np.savez_compressed(stem + "-peers.npz", near=near, hull=near & ~np.isnan(inside), **grids)


def bilinear(raster, place, nodes):
    """A raster at the nodes; of the four cells about a node those that have a value count."""
    column = (nodes.x - place[0]) / place[1] - 0.5
    row = (nodes.y - place[3]) / place[5] - 0.5
    padded = np.pad(raster, 1, constant_values=np.nan)
    column = np.clip(column, -1, raster.shape[1])
    row = np.clip(row, -1, raster.shape[0])
    c, r = np.floor(column).astype(int), np.floor(row).astype(int)
    total, weight = np.zeros(nodes.truth.shape), np.zeros(nodes.truth.shape)
    for dr in (0, 1):
        for dc in (0, 1):
            value = padded[np.ix_(np.minimum(r + dr + 1, padded.shape[0] - 1),
                                  np.minimum(c + dc + 1, padded.shape[1] - 1))]
            share = np.outer(np.abs(1 - dr - (row - r)), np.abs(1 - dc - (column - c)))
            share = np.where(np.isnan(value), 0, share)
            total += share * np.nan_to_num(value)
            weight += share
    return np.where(weight > 0.2, total / np.where(weight > 0, weight, 1), np.nan)


def rms(errors):
    return float(np.sqrt(np.mean(errors ** 2))) if errors.size else float("nan")


class Water:
    """The errors of all programs on one water, on the cells where all have a value."""

    def __init__(self, name, spacing, stem, ours):
        self.name, self.spacing = name, spacing
        grids = np.load(stem + "-peers.npz")
        self.truth = grids["truth"]
        self.grids = {peer: grids[peer] for peer in grids.files if peer not in ("truth", "near", "hull")}
        self.uncertainty = None
        if ours:
            with tempfile.TemporaryDirectory() as folder:
                bands, place = read_raster(ours, folder)
            nodes = Nodes(stem + "-bed.asc")
            self.grids = {"ours": bilinear(bands[0], place, nodes), **self.grids}
            self.uncertainty = bilinear(bands[1], place, nodes)
            self.cell = place[1]
        valued = ~np.isnan(sum(self.grids.values()))
        self.near, self.hull = grids["near"], grids["hull"] & valued
        self.missing = int(np.sum(self.near & ~valued))
        self.judged = self.near & valued

    def errors(self, program, cells):
        return self.grids[program][cells] - self.truth[cells]

    def table_row(self, programs, cells):
        found = {program: rms(self.errors(program, cells)) for program in programs}
        best = min(found[peer] for peer in PEERS)
        row = [self.name, f"{self.spacing:g} m", str(int(cells.sum())), *(f"{found[p]:.4f}" for p in programs)]
        ratio = found["ours"] / best if "ours" in found else float("nan")
        return row + ([f"{ratio:.3f}"] if "ours" in found else []), ratio

    def uncertainty_row(self):
        """Cells within twice the uncertainty; errors of its largest tenth and its median tenth."""
        error, told = self.errors("ours", self.judged), self.uncertainty[self.judged]
        order = np.argsort(told, kind="stable")
        tenth = len(order) // 10
        middle = order[(len(order) - tenth) // 2:][:tenth]
        largest = order[len(order) - tenth:]
        within = 100 * float(np.mean(np.abs(error) <= 2 * told))
        high, mid = rms(error[largest]), rms(error[middle])
        return [self.name, f"{self.cell:g} m", str(self.missing), f"{within:.1f} %", f"{high:.4f}", f"{mid:.4f}",
                f"{high / mid:.2f}"]


def print_table(head, rows):
    print("| " + " | ".join(head) + " |\n|" + "---|" * len(head))
    for row in rows:
        print("| " + " | ".join(row) + " |")
    print()


def print_tables(texts):
    waters = []
    for text in texts:
        name, spacing, stem, *ours = text.split(":")
        waters.append(Water(name, float(spacing), stem, ours[0] if ours else None))
    programs = list(waters[0].grids)
    has_ours = "ours" in programs
    head = ["water", "lines", "cells", *programs] + (["ours to the best"] if has_ours else [])
    for title, part in (("all cells", "judged"), ("inside the triangulation", "hull")):
        print(f"Root mean square error in metres, {title}:\n")
        rows, ratios = zip(*(water.table_row(programs, getattr(water, part)) for water in waters))
        print_table(head, rows)
        if has_ours:
            print(f"ratio to the best: mean {np.mean(ratios):.3f}, largest {max(ratios):.3f}\n")
    if has_ours:
        print_table(["water", "cell", "cells without our value", "within twice the uncertainty",
                     "RMSE of the largest tenth", "of the median tenth", "ratio"],
                    [water.uncertainty_row() for water in waters])


if __name__ == "__main__":
    if len(sys.argv) == 4 and sys.argv[1] == "peers":
        make_peers(sys.argv[2], float(sys.argv[3]))
    elif len(sys.argv) > 2 and sys.argv[1] == "table":
        print_tables(sys.argv[2:])
    else:
        sys.exit(__doc__)
