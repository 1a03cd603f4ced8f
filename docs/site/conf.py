"""How Sphinx builds the site; scripts/docs gathers its sources first."""

import os

project = "Vorm Assessments"
copyright = "the authors of Vorm Assessments"
release = version = os.environ["VORM_VERSION"]

extensions = ["breathe", "myst_parser", "sphinx.ext.autodoc"]
html_theme = "sphinx_rtd_theme"
html_theme_options = {"navigation_depth": 3}
html_copy_source = False
html_show_sourcelink = False

myst_heading_anchors = 4
# Fences that only tests read the second word of.
myst_enable_extensions = ["colon_fence"]

breathe_projects = {"vorm": os.environ["VORM_DOXYGEN_XML"]}
breathe_default_project = "vorm"
breathe_default_members = ("members",)

autodoc_member_order = "bysource"
autodoc_typehints = "signature"
autodoc_preserve_defaults = True

nitpicky = True
# What is no part of the site: other libraries, what is private here, and most types that signatures
# in C++ name, of which the site shows those that callers meet first. Pages link by Markdown, whose
# links are all checked.
nitpick_ignore_regex = [
    ("cpp:.*", ".*"),
    ("py:.*", r"(pd|np|os|collections|matplotlib)\..*|vorm\._.*"),
]
suppress_warnings = ["ref.ref"]
