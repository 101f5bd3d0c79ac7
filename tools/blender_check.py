"""Proves glTF files of a level in Blender 3.4 and up, in batch:

    blender -b -P tools/blender_check.py -- FOLDER FACTS.json INFO.json

FOLDER holds the files that `morlik-cli gltf LEVEL -d FOLDER` wrote, or those with --skin. FACTS.json
comes from `morlik-gltf-facts LEVEL`, INFO.json from `morlik-cli info LEVEL --json`. Each file is
imported: its nodes or bones, meshes, vertices, triangles and actions are counted, and the meshes of
the first moveable have to stand where the model has them. `./run blender-check LEVEL` does it all.
"""
import json
import os
import struct
import sys

import bpy
import numpy

if not hasattr(numpy, "bool"):  # which Debian's Blender 3.4 still takes from its younger numpy
    numpy.bool = bool

MOST_DISTANCE = 0.001  # metres
# Between two frames Blender goes straight from one quaternion to the next, where the format and the
# games take the arc.
MOST_BETWEEN = 0.02
FRAMES_IN_SECOND = 30


def read_json(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)


def tables_of(path):
    """The JSON of a .glb file."""
    with open(path, "rb") as file:
        length = struct.unpack("<5I", file.read(20))[3]
        return json.loads(file.read(length))


def import_file(path):
    bpy.ops.wm.read_factory_settings(use_empty=True)
    bpy.context.scene.render.fps = FRAMES_IN_SECOND
    bpy.ops.import_scene.gltf(filepath=path)


def counts_of(objects):
    """What Blender has of a file."""
    armatures = [o for o in objects if o.type == "ARMATURE"]
    meshes = [o for o in objects if o.type == "MESH" and o.name in bpy.context.scene.objects]
    if armatures:  # the importer brings a mesh of its own to draw bones with
        meshes = [o for o in meshes if o.find_armature()]
    return {
        "nodes": sum(len(a.data.bones) for a in armatures) or len(objects),
        "meshes": len(meshes),
        "vertices": sum(len(o.data.vertices) for o in meshes),
        "triangles": sum(len(o.data.polygons) for o in meshes),
        "actions": len(bpy.data.actions),
    }


def wanted_counts(facts, tables):
    """What it should have. A tree of nodes has an action for each of them in each animation."""
    has_skin = "skins" in tables
    vertices = [
        tables["accessors"][p["attributes"]["POSITION"]]["count"]
        for mesh in tables.get("meshes", [])
        for p in mesh["primitives"]
    ]
    return {
        "nodes": facts["nodes"],
        "meshes": min(facts["meshes"], 1) if has_skin else facts["meshes"],
        "vertices": sum(vertices),
        "triangles": facts["triangles"],
        "actions": facts["animations"] * (1 if has_skin else facts["nodes"]),
    }


def check_info(facts, info):
    """Meshes and animations of moveables stand in `info --json` too."""
    moveables = [o for o in facts["objects"] if not o["file"].startswith("static-")]
    told = [(m["meshes"], m["animations"]) for m in info["files"][0]["moveables"]]
    return told == [(m["nodes"], m["animations"]) for m in moveables]


def set_animation(number):
    """Lets all objects play the animation of that number alone."""
    for thing in bpy.context.scene.objects:
        data = thing.animation_data
        if data is None:
            continue
        tracks = [t for t in data.nla_tracks if t.name.split("_")[0] == str(number)]
        for track in data.nla_tracks:
            track.mute = True
        data.action = tracks[0].strips[0].action if tracks else None


def places(name_of):
    """Where the nodes or bones stand, in metres and the axes of glTF."""
    found = {}
    bpy.context.view_layer.update()
    for thing in bpy.context.scene.objects:
        if thing.type == "ARMATURE":
            for bone in thing.pose.bones:
                found[bone.name] = (thing.matrix_world @ bone.matrix).translation
        else:
            found[thing.name] = thing.matrix_world.translation
    return [(found[n].x, found[n].z, -found[n].y) for n in name_of]


def check_poses(facts, tables):
    names = [node["name"] for node in tables["nodes"]][: len(facts["poses"][0]["places"])]
    worst = {True: 0, False: 0}
    for pose in facts["poses"]:
        set_animation(pose["animation"])
        bpy.context.scene.frame_set(pose["frame"])
        for ours, theirs in zip(pose["places"], places(names)):
            distance = max(abs(a - b) for a, b in zip(ours, theirs))
            worst[pose["stored"]] = max(worst[pose["stored"]], distance)
    print(f"{len(facts['poses'])} poses: nodes at most {worst[True]:.6f} m apart in frames of the "
          f"level, {worst[False]:.6f} m between two")
    return worst[True] <= MOST_DISTANCE and worst[False] <= MOST_BETWEEN


def main():
    folder, facts_path, info_path = sys.argv[sys.argv.index("--") + 1:]
    facts = read_json(facts_path)
    good = check_info(facts, read_json(info_path))
    print("info --json tells", "the same" if good else "OTHER COUNTS")
    for number, entry in enumerate(facts["objects"]):
        path = os.path.join(folder, entry["file"])
        tables = tables_of(path)
        import_file(path)
        found, wanted = counts_of(list(bpy.context.scene.objects)), wanted_counts(entry, tables)
        print(entry["file"], found, "" if found == wanted else f"WANTED {wanted}", flush=True)
        good = good and found == wanted
        if number == 0:
            good = check_poses(facts, tables) and good
    print("All as it should be" if good else "NOT as it should be")
    sys.exit(0 if good else 1)


main()
