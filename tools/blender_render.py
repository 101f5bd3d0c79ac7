"""Draws a glTF file with Blender, in batch:

    blender -b -P tools/blender_render.py -- OBJECT.glb OUT.png [ANIMATION FRAME [YAW PITCH]]

The object stands in the pose that the file has, or in a frame of an animation, 30 to a second, and
is seen as `morlik-cli picture` sees it, from a little to its right and from above.
"""
import math
import sys

import bpy
import numpy
from mathutils import Vector

if not hasattr(numpy, "bool"):  # which Debian's Blender 3.4 still takes from its younger numpy
    numpy.bool = bool


def set_animation(number, frame):
    for thing in bpy.context.scene.objects:
        data = thing.animation_data
        if data is None:
            continue
        for track in data.nla_tracks:
            track.mute = True
        own = [t for t in data.nla_tracks if t.name.split("_")[0] == number]
        data.action = own[0].strips[0].action if own else None
    bpy.context.scene.frame_set(frame)


def corners():
    """The vertices of all meshes, where they stand."""
    graph = bpy.context.evaluated_depsgraph_get()
    for thing in bpy.context.scene.objects:
        if thing.type == "MESH":
            placed = thing.evaluated_get(graph)
            for vertex in placed.to_mesh().vertices:
                yield placed.matrix_world @ vertex.co


def add_camera(yaw, pitch):
    points = list(corners())
    least = [min(p[i] for p in points) for i in range(3)]
    greatest = [max(p[i] for p in points) for i in range(3)]
    middle = (Vector(least) + Vector(greatest)) / 2
    radius = max((p - middle).length for p in points)
    camera = bpy.data.cameras.new("camera")
    camera.angle = math.radians(50)
    thing = bpy.data.objects.new("camera", camera)
    bpy.context.scene.collection.objects.link(thing)
    # In Blender objects of a glTF file look along -Y.
    away = Vector((-math.sin(yaw) * math.cos(pitch), -math.cos(yaw) * math.cos(pitch),
                   math.sin(pitch)))
    thing.location = middle + away * radius / math.sin(math.radians(18))
    thing.rotation_euler = (-away).to_track_quat("-Z", "Y").to_euler()
    bpy.context.scene.camera = thing


def main():
    words = sys.argv[sys.argv.index("--") + 1:]
    bpy.ops.wm.read_factory_settings(use_empty=True)
    scene = bpy.context.scene
    scene.render.fps = 30
    bpy.ops.import_scene.gltf(filepath=words[0])
    if len(words) > 3:
        set_animation(words[2], int(words[3]))
    angles = words[4:6] if len(words) > 5 else (30, 15)
    add_camera(*(math.radians(float(angle)) for angle in angles))
    scene.render.engine = "CYCLES"  # needs no display
    scene.cycles.samples = 32
    scene.cycles.use_denoising = False  # which Debian leaves out
    scene.cycles.transparent_max_bounces = 64
    scene.view_settings.view_transform = "Standard"
    scene.render.resolution_x, scene.render.resolution_y = 800, 600
    scene.render.film_transparent = True
    scene.render.filepath = words[1]
    bpy.ops.render.render(write_still=True)


main()
