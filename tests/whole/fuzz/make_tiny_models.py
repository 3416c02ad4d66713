#!/usr/bin/env python3
"""Writes the models that the fuzzer of model files starts from.   make_tiny_models.py OUT_DIR

They are whole, but small enough for each byte of the head to count: a few tokens, two layers.
"""
import pathlib
import sys

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent.parent / "engines/writing"))
import make_swa_model as model  # noqa: E402

model.LAYERS, model.WIDTH, model.HEADS, model.HEAD, model.INNER, model.WINDOW = 2, 32, 2, 16, 32, 16


def few_tokens():
    tokens = [("<unk>", 0.0, model.UNKNOWN), ("<s>", 0.0, model.CONTROL), ("</s>", 0.0, model.CONTROL)]
    return tokens + [("<0x0A>", 0.0, model.BYTE)] + [(letter, 0.0, model.NORMAL) for letter in "abcd"]


def renamed(entry):
    """The same property for the architecture without sliding windows."""
    length = int.from_bytes(entry[:8], "little")
    key, value = entry[8:8 + length].decode(), entry[8 + length:]
    return model.string(key.replace("gemma2.", "llama.")) + value.replace(model.string("gemma2"), model.string("llama"))


def plain_llama(folder):
    metadata, tensors = model.metadata, model.tensors
    model.metadata = lambda: [renamed(entry) for entry in metadata()]
    model.tensors = lambda: ((name, shape) for name, shape in tensors() if "post_" not in name)
    model.main(folder / "llama.gguf")


def main(folder):
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    model.vocabulary = few_tokens
    model.main(folder / "gemma2.gguf")
    plain_llama(folder)


if __name__ == "__main__":
    main(sys.argv[1])
